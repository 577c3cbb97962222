#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QuorviCore/async/Async.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/TaskScope.h"
#include "tests/fakes/VirtualScheduler.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

Task<void> sleepThenWrite(Scheduler& scheduler, std::string& journal, std::stop_token stop) {
    struct Ending {
        std::string& journal;
        ~Ending() { journal += "frame gone"; }
    } ending{journal};
    auto pause = sleepFor(scheduler, 1s, stop);
    co_await pause;
    journal += "woke, ";
}

TEST(Async, CancellingEndsATaskInALaterTurnAndDroppingItsScopeAtOnceAndItNeverWakes) {
    for (const bool dropped : {false, true}) {
        VirtualScheduler scheduler;
        std::string journal;
        auto scope = std::make_unique<TaskScope>(scheduler);
        auto handle = scope->start(
            [&](std::stop_token stop) { return sleepThenWrite(scheduler, journal, stop); });
        if (dropped)
            scope.reset();
        else
            handle.cancel();
        EXPECT_EQ(journal, dropped ? "frame gone" : "");
        scheduler.advance(2s);
        EXPECT_EQ(journal, "frame gone");
    }
}

TEST(Lifetime, AGuardedCallbackEndsWithItsOwner) {
    int calls = 0;
    auto owner = std::make_unique<Lifetime>();
    const auto call = owner->guard([&](int times) { calls += times; });
    call(2);
    owner.reset();
    call(2);
    EXPECT_EQ(calls, 2);
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
}  // namespace quorvi::test
