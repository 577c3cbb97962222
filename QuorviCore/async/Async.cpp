#include "QuorviCore/async/Async.h"

namespace quorvi {

void throwIfStopped(const std::stop_token& stop) {
    if (stop.stop_requested()) throw Cancelled{};
}

Task<void> sleepFor(Scheduler& scheduler, Duration delay, std::stop_token stop) {
    throwIfStopped(stop);
    Promise<void> promise(scheduler);
    auto future = promise.future(std::move(stop));
    Timer timer = scheduler.after(delay, [promise]() mutable { promise.resolve(); });
    co_await future;
}

}  // namespace quorvi
