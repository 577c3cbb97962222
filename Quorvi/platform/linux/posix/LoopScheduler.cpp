#include "Quorvi/platform/linux/posix/LoopScheduler.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace quorvi {

TimePoint LoopScheduler::now() const {
    return std::chrono::steady_clock::now();
}

Date LoopScheduler::date() const {
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    return Date::fromUnixSeconds(std::chrono::duration<double>(since).count());
}

void LoopScheduler::post(std::function<void()> work) {
    {
        std::lock_guard lock(mutex_);
        posted_.push_back(std::move(work));
    }
    wake_.notify_one();
}

Timer LoopScheduler::after(Duration delay, std::function<void()> work) {
    return timers_.add(now() + delay, Duration::zero(), std::move(work));
}

Timer LoopScheduler::every(Duration period, std::function<void()> work) {
    return timers_.add(now() + period, period, std::move(work));
}

void LoopScheduler::runTurn(TimePoint limit) {
    std::function<void()> work;
    {
        std::unique_lock lock(mutex_);
        const auto until = std::min(limit, timers_.firstDue().value_or(limit));
        wake_.wait_until(lock, until, [this] { return !posted_.empty(); });
        if (!posted_.empty()) {
            work = std::move(posted_.front());
            posted_.pop_front();
        }
    }
    if (!work) {
        const auto due = timers_.firstDue();
        if (!due || *due > now()) return;
        work = timers_.takeFirst(now());
    }
    work();
}

bool LoopScheduler::runUntil(const std::function<bool()>& done, Duration limit) {
    const auto end = now() + limit;
    while (!done()) {
        runTurn(end);
        if (now() >= end) return done();
    }
    return true;
}

void LoopScheduler::runFor(Duration limit) {
    runUntil([] { return false; }, limit);
}

}  // namespace quorvi
