#pragma once

#include <memory>

#include "Quorvi/platform/linux/gio/SessionWorkspace.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The session as the window manager, logind and the screen saver describe it. A thread of its own
// tracks the frontmost application by the window manager's properties and listens for sleep, wake
// and locking; queries return the last known state. Created and destroyed on the main thread; the
// scheduler must outlive it. Tries a lost X connection again every second.
class X11Workspace final : public SessionWorkspace {
public:
    explicit X11Workspace(Scheduler& scheduler);
    ~X11Workspace() override;

    std::optional<RunningApplication> frontmostApplication() const override;

private:
    class Watcher;

    std::unique_ptr<Watcher> watcher_;
};

}  // namespace quorvi
