#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

#include "QuorviCore/async/TimerQueue.h"

namespace quorvi {

// The scheduler of programs without a toolkit's event loop: tools, tests and benchmarks. The thread
// that calls runUntil() is its main thread and sleeps while nothing is due.
class LoopScheduler : public Scheduler {
public:
    TimePoint now() const override;
    Date date() const override;
    void post(std::function<void()> work) override;
    Timer after(Duration delay, std::function<void()> work) override;
    Timer every(Duration period, std::function<void()> work) override;

    // Runs turns until `done` returns true; it is asked after each turn. Returns false if it still
    // does not after `limit`.
    bool runUntil(const std::function<bool()>& done, Duration limit);
    void runFor(Duration limit);

private:
    void runTurn(TimePoint limit);

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> posted_;
    TimerQueue timers_;
};

}  // namespace quorvi
