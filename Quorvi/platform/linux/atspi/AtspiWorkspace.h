#pragma once

#include <memory>
#include <string>

#include "Quorvi/platform/linux/gio/SessionWorkspace.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The session as the accessibility bus, logind and the screen saver describe it, for compositors
// that show no program which window has the focus. The frontmost application is the one with the
// active window; a program that is not on the accessibility bus counts as none. Threads of its own
// follow the windows; queries return the last known state. Created and destroyed on the main
// thread; the scheduler outlives it.
class AtspiWorkspace final : public SessionWorkspace {
public:
    explicit AtspiWorkspace(Scheduler& scheduler);
    ~AtspiWorkspace() override;

    std::optional<RunningApplication> frontmostApplication() const override;

    // The name that the frontmost program gives itself on the bus, such as "gnome-text-editor";
    // empty if none is known. Any thread.
    std::string frontmostClass() const;

private:
    class Watcher;

    std::unique_ptr<Watcher> watcher_;
};

}  // namespace quorvi
