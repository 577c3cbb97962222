#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// A scheduler of its own on the thread that runs it, for programs without a toolkit's event loop:
// tools, tests and benchmarks. Sleeps while there is nothing to do.
class LoopScheduler : public Scheduler {
public:
    LoopScheduler();
    ~LoopScheduler() override;

    TimePoint now() const override;
    Date date() const override;
    void post(std::function<void()> work) override;
    Timer after(Duration delay, std::function<void()> work) override;
    Timer every(Duration period, std::function<void()> work) override;

    // Runs turns until `done` says so or `limit` has passed; true when it is done. `done` is asked
    // after every turn.
    bool runUntil(const std::function<bool()>& done, Duration limit);
    void runFor(Duration limit);

private:
    struct Entry {
        std::function<void()> work;
        Duration period{};  // zero for a single call
    };
    struct Timers;
    struct TimerNode;

    Timer schedule(Duration delay, Entry entry);
    bool runTurn(TimePoint limit);

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> posted_;
    std::shared_ptr<Timers> timers_;
};

}  // namespace quorvi
