#pragma once

#include <memory>

#include "Quorvi/platform/Workspace.h"
#include "Quorvi/platform/linux/gio/SessionWatch.h"

namespace quorvi {

// What is the same whatever draws the windows: sleep, waking and locking, of which logind and the
// screen savers tell. The subclass has a SessionWatch for `signals_`. Main thread.
class SessionWorkspace : public Workspace {
public:
    pid_t ownPid() const final;
    [[nodiscard]] Subscription onWillSleep(std::function<void()> observer) final;
    [[nodiscard]] Subscription onDidWake(std::function<void()> observer) final;
    [[nodiscard]] Subscription onScreenLock(std::function<void()> observer) final;

protected:
    const std::shared_ptr<SessionSignals> signals_ = std::make_shared<SessionSignals>();
};

}  // namespace quorvi
