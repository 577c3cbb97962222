#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QuorviCore/async/Async.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/TaskScope.h"
#include "tests/fakes/VirtualScheduler.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;

struct Journal {
    std::vector<std::string> lines;
};

Task<int> slowAnswer(Scheduler& scheduler, std::stop_token stop) {
    auto pause = sleepFor(scheduler, 10ms, stop);
    co_await pause;
    co_return 42;
}

Task<void> twoAnswers(Scheduler& scheduler, Journal& journal, std::stop_token stop) {
    auto first = slowAnswer(scheduler, stop);
    auto second = slowAnswer(scheduler, stop);
    first.start();
    second.start();
    const int sum = co_await first + co_await second;
    journal.lines.push_back("sum " + std::to_string(sum));
}

Task<void> sleepThenWrite(Scheduler& scheduler, Journal& journal, std::stop_token stop) {
    struct Ending {
        Journal& journal;
        ~Ending() { journal.lines.push_back("frame gone"); }
    } ending{journal};
    auto pause = sleepFor(scheduler, 1s, stop);
    co_await pause;
    journal.lines.push_back("woke");
}

Task<void> failing(Executor& executor, Scheduler& scheduler, Journal& journal) {
    auto job = inBackground(executor, scheduler, []() -> int { throw std::runtime_error("no"); });
    try {
        co_await job;
    } catch (const std::exception& e) {
        journal.lines.push_back(e.what());
    }
}

TEST(Async, TasksStartedSideBySideTakeTheTimeOfOne) {
    VirtualScheduler scheduler;
    Journal journal;
    TaskScope scope(scheduler);
    scope.start([&](std::stop_token stop) { return twoAnswers(scheduler, journal, stop); });
    scheduler.advance(9ms);
    EXPECT_TRUE(journal.lines.empty());
    scheduler.advance(1ms);
    EXPECT_EQ(journal.lines, std::vector<std::string>{"sum 84"});
    EXPECT_TRUE(scope.isEmpty());
}

TEST(Async, CancellingEndsATaskInALaterTurnAndItNeverWakes) {
    VirtualScheduler scheduler;
    Journal journal;
    TaskScope scope(scheduler);
    auto handle =
        scope.start([&](std::stop_token stop) { return sleepThenWrite(scheduler, journal, stop); });
    handle.cancel();
    EXPECT_TRUE(journal.lines.empty());
    scheduler.advance(2s);
    EXPECT_EQ(journal.lines, std::vector<std::string>{"frame gone"});
}

TEST(Async, AScopeTakesItsFramesWithItAndLateResultsAreDropped) {
    VirtualScheduler scheduler;
    Journal journal;
    {
        TaskScope scope(scheduler);
        scope.start(
            [&](std::stop_token stop) { return sleepThenWrite(scheduler, journal, stop); });
    }
    EXPECT_EQ(journal.lines, std::vector<std::string>{"frame gone"});
    scheduler.advance(2s);
    EXPECT_EQ(journal.lines.size(), 1u);
}

TEST(Async, AnExceptionOfABackgroundJobReachesTheAwaiter) {
    VirtualScheduler scheduler;
    TurnExecutor executor(scheduler);
    Journal journal;
    TaskScope scope(scheduler);
    scope.start([&](std::stop_token) { return failing(executor, scheduler, journal); });
    scheduler.settle();
    EXPECT_EQ(journal.lines, std::vector<std::string>{"no"});
}

TEST(Observable, ObserversMayComeAndGoWhileBeingTold) {
    Observable observable;
    std::vector<int> told;
    Subscription second;
    auto first = observable.subscribe([&] {
        told.push_back(1);
        second = {};
    });
    second = observable.subscribe([&] { told.push_back(2); });
    observable.notify();
    observable.notify();
    EXPECT_EQ(told, (std::vector<int>{1, 1}));
}

}  // namespace
}  // namespace quorvi
