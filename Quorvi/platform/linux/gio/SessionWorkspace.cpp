#include "Quorvi/platform/linux/gio/SessionWorkspace.h"

#include <unistd.h>

#include <utility>

namespace quorvi {

pid_t SessionWorkspace::ownPid() const {
    return getpid();
}

Subscription SessionWorkspace::onWillSleep(std::function<void()> observer) {
    return signals_->willSleep.subscribe(std::move(observer));
}

Subscription SessionWorkspace::onDidWake(std::function<void()> observer) {
    return signals_->didWake.subscribe(std::move(observer));
}

Subscription SessionWorkspace::onScreenLock(std::function<void()> observer) {
    return signals_->screenLock.subscribe(std::move(observer));
}

}  // namespace quorvi
