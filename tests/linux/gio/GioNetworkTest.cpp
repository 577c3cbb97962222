#include "Quorvi/platform/linux/gio/GioNetwork.h"

#include <gtest/gtest.h>
#include <sched.h>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

TEST(GioNetwork, TellsThatTheNetworkIsThereAgain) {
    inAProcessOfItsOwn([] {
        if (::unshare(CLONE_NEWNET) != 0) GTEST_SKIP() << "not allowed to take the network away";
        LoopScheduler scheduler;
        GioNetwork network(scheduler);
        int returns = 0;
        const auto observer = network.onReturn([&] { ++returns; });
        // It looks at the network in the background: until it knows the first one, again.
        EXPECT_TRUE(until(scheduler, [&] {
            shell("ip link set lo up; ip route del default 2>&1; ip route add default dev lo");
            scheduler.runFor(std::chrono::milliseconds(100));
            return returns > 0;
        }));
    });
}

}  // namespace
}  // namespace quorvi::test
