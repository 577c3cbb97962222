#pragma once

#include <memory>

#include "Quorvi/platform/Workspace.h"
#include "Quorvi/platform/linux/gio/SessionWatch.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The session as the window manager, logind and the screen saver describe it. A thread of its own
// tracks the frontmost application by the window manager's properties and listens for sleep, wake
// and locking; queries return the last known state. Created and destroyed on the main thread; the
// scheduler must outlive it. Tries a lost X connection again every second.
class X11Workspace final : public Workspace {
public:
    explicit X11Workspace(Scheduler& scheduler);
    ~X11Workspace() override;

    std::optional<RunningApplication> frontmostApplication() const override;
    pid_t ownPid() const override;
    [[nodiscard]] Subscription onWillSleep(std::function<void()> observer) override;
    [[nodiscard]] Subscription onDidWake(std::function<void()> observer) override;
    [[nodiscard]] Subscription onScreenLock(std::function<void()> observer) override;

private:
    class Watcher;

    std::shared_ptr<SessionSignals> signals_;
    std::unique_ptr<Watcher> watcher_;
};

}  // namespace quorvi
