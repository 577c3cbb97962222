#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/TimerQueue.h"

namespace quorvi::test {

// A scheduler whose clock moves only when a test advances it: minutes of a dictation take
// milliseconds, and every run takes the same turns in the same order.
class VirtualScheduler : public Scheduler {
public:
    TimePoint now() const override { return now_; }
    Date date() const override;
    void post(std::function<void()> work) override { posted_.push_back(std::move(work)); }
    Timer after(Duration delay, std::function<void()> work) override {
        return timers_.add(now_ + delay, Duration::zero(), std::move(work));
    }
    Timer every(Duration period, std::function<void()> work) override {
        return timers_.add(now_ + period, period, std::move(work));
    }

    // Runs everything that is due now, including what that posts.
    void settle();
    // Moves the clock, running each timer at its own time.
    void advance(Duration by);
    // The clock is set, or the machine sleeps: the date moves, timers don't notice.
    void moveDate(Duration by) { dateAhead_ += by; }
    // Lets time pass inside a turn, as a blocking call does: timers that fall due meanwhile run
    // late.
    void elapse(Duration by) { now_ += by; }
    // The periods of the running timers, ascending; zero for one that fires once.
    std::vector<Duration> timers() const { return timers_.periods(); }

private:
    TimePoint now_{};
    Duration dateAhead_{};
    std::deque<std::function<void()>> posted_;
    TimerQueue timers_;
};

// An executor whose jobs are turns of the scheduler, in order.
class TurnExecutor : public Executor {
public:
    explicit TurnExecutor(Scheduler& scheduler) : scheduler_(scheduler) {}
    void run(std::function<void()> job) override { scheduler_.post(std::move(job)); }

private:
    Scheduler& scheduler_;
};

// An executor whose jobs wait until the test releases them.
class HeldExecutor : public Executor {
public:
    void run(std::function<void()> job) override {
        jobs.push_back(std::move(job));
        if (!isHeld) release();
    }
    void runAll() {
        for (; !jobs.empty(); jobs.pop_front()) jobs.front()();
    }
    void release() {
        isHeld = false;
        runAll();
    }
    bool isHeld = true;
    std::deque<std::function<void()>> jobs;
};

}  // namespace quorvi::test
