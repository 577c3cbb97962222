#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi::test {

// A clock that stands still until a test advances it: minutes of a dictation take milliseconds, and
// every run takes the same turns in the same order.
class VirtualScheduler : public Scheduler {
public:
    TimePoint now() const override { return now_; }
    Date date() const override;
    void post(std::function<void()> work) override { posted_.push_back(std::move(work)); }
    Timer after(Duration delay, std::function<void()> work) override;
    Timer every(Duration period, std::function<void()> work) override;

    // Runs everything that is due now, including what that posts.
    void settle();
    // Moves the clock, running each timer at its own time.
    void advance(Duration by);
    // Time that passes inside a turn, as in a call that blocks: what falls due meanwhile runs late.
    void elapse(Duration by) { now_ += by; }
    // The periods of the timers that run, in order; zero for one that fires once.
    std::vector<Duration> timers() const;

private:
    struct Entry {
        std::function<void()> work;
        Duration period{};
    };
    using Key = std::pair<TimePoint, std::uint64_t>;
    struct Timers {
        std::map<Key, Entry> entries;
    };
    struct Node;
    Timer schedule(Duration delay, Entry entry);

    TimePoint now_{};
    std::uint64_t lastId_ = 0;
    std::deque<std::function<void()>> posted_;
    std::shared_ptr<Timers> timers_ = std::make_shared<Timers>();
};

// An executor whose jobs are turns of the scheduler, in order.
class TurnExecutor : public Executor {
public:
    explicit TurnExecutor(Scheduler& scheduler) : scheduler_(scheduler) {}
    void run(std::function<void()> job) override { scheduler_.post(std::move(job)); }

private:
    Scheduler& scheduler_;
};

// An executor whose jobs wait until the test lets them run; at once when nothing is held.
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
