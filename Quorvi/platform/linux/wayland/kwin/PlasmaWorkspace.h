#pragma once

#include <memory>
#include <string>

#include "Quorvi/platform/linux/gio/SessionWorkspace.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The session as KWin, logind and the screen saver describe it; KWin also knows the windows of
// programs that the accessibility bus does not, and those of X11. A thread of its own follows the
// focused window; queries return the last known state. Created and destroyed on the main thread;
// the scheduler outlives it. Tries a lost connection again every second.
class PlasmaWorkspace final : public SessionWorkspace {
public:
    explicit PlasmaWorkspace(Scheduler& scheduler);
    ~PlasmaWorkspace() override;

    std::optional<RunningApplication> frontmostApplication() const override;

    // The name that the focused window's program gives itself, such as "org.kde.kwrite", or an X11
    // class; empty if none has the focus. Any thread.
    std::string frontmostClass() const;

private:
    class Watcher;

    std::unique_ptr<Watcher> watcher_;
};

}  // namespace quorvi
