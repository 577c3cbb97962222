#include "Quorvi/sync/CloudReleaseCheck.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeCloudDatabase.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

using Op = CloudOperation;

class CloudReleaseCheckTest : public testing::Test {
protected:
    // The exit status and what was printed.
    std::string check() {
        std::string printed;
        Running<std::int32_t> running(
            CloudReleaseCheck::run(device, [&](const std::string& line) { printed += line; }));
        scheduler.advance(std::chrono::seconds(1));
        return std::to_string(running.value().value_or(-1)) + " " + printed;
    }

    VirtualScheduler scheduler;
    FakeCloudServer server{scheduler};
    FakeCloudDatabase device{scheduler, server, "anna"};
};

TEST_F(CloudReleaseCheckTest, TellsWhatWentWrongAndCleansUp) {
    const CloudError error(cloudErrorCode::networkFailure, "The line is cut.");
    for (const auto operation :
         {Op::accountStatus, Op::saveZone, Op::saveRecords, Op::fetchRecord, Op::deleteZone}) {
        const auto before = device.calls[Op::deleteZone];
        device.fail(operation, error);
        EXPECT_EQ(check(), "1 Cloud check failed: The line is cut.");
        EXPECT_EQ(device.calls[Op::deleteZone] - before, operation == Op::accountStatus ? 0
                                                         : operation == Op::deleteZone  ? 2
                                                                                        : 1);
        EXPECT_TRUE(server.zones("anna").empty());
    }
    const CloudError full(cloudErrorCode::quotaExceeded, "It is full.");
    device.failRecord("synthetic-check", full);
    device.fail(Op::deleteZone, error);
    EXPECT_EQ(check(), "1 Cloud check failed: It is full.");
    device.damagesPayloads = true;
    EXPECT_EQ(check(),
              "1 Cloud check failed: The data couldn’t be read because it isn’t in the correct "
              "format.");
}

}  // namespace
}  // namespace quorvi::test
