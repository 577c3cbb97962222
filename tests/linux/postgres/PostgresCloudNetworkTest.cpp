#include <gtest/gtest.h>

#include "tests/support/cloud/FarNetwork.h"
#include "tests/support/cloud/PostgresMachines.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;
namespace code = cloudErrorCode;

// A server behind a link that is cut and slowed down, and a second device next to the server.
class PostgresCloudNetworkTest : public testing::Test, protected PostgresDesk {
protected:
    void SetUp() override {
        if (geteuid() != 0) GTEST_SKIP() << "only root may make networks";
        static FarNetwork network;
        static PostgresServer one(FarNetwork::farAddress, network.prefix());
        network_ = &network;
        server_ = &one;
        account = newAccount(one);
        other = std::make_unique<PostgresCloudDatabase>(loop, one.socketAddress(account),
                                                        password("pass word"));
        get(other->saveZone("Notes", {}));
    }
    FarNetwork& network() const { return *network_; }
    std::unique_ptr<PostgresCloudDatabase> farMachine(PostgresTimes times) {
        return std::make_unique<PostgresCloudDatabase>(
            loop, server_->address(account, "?sslmode=prefer"), password("pass word"), times);
    }
    static bool isOffline(int error) {
        return error == code::networkUnavailable || error == code::networkFailure;
    }

    std::string account;
    std::unique_ptr<PostgresCloudDatabase> other;

private:
    FarNetwork* network_ = nullptr;
    PostgresServer* server_ = nullptr;
};

TEST_F(PostgresCloudNetworkTest, ComesBackAfterACutAndMissesNothing) {
    const auto machine =
        farMachine({.connect = 1s, .response = 1s, .firstRetry = 50ms, .lastRetry = 200ms});
    int told = 0;
    auto subscription = machine->onRemoteChange([&] { ++told; });
    get(machine->saveSubscription("changes", {}));

    network().cut();
    Running<std::vector<CloudSaveResult>> saving(
        machine->saveRecords({noteRecord("in the cut", "x")}, {}));
    EXPECT_TRUE(isOffline(code(machine->zoneChanges("", {}))));
    ASSERT_TRUE(await(loop, saving));
    EXPECT_FALSE(saving.value());
    EXPECT_TRUE(isOffline(code(machine->accountStatus({})))) << "offline is no missing account";
    get(other->saveRecords({noteRecord("meanwhile", "y")}, {}));

    const auto before = told;
    network().mend();
    EXPECT_TRUE(until(loop, [&] { return told > before; })) << "nobody was told after the cut";
    EXPECT_EQ(textOf(*everything(*machine)["meanwhile"].payload), "y");
    // The failed save may have been committed: then it is there completely, and once.
    const auto results = get(machine->saveRecords({noteRecord("in the cut", "x")}, {}));
    if (results.at(0).error) {
        EXPECT_EQ(results[0].error->code(), code::serverRecordChanged);
        EXPECT_EQ(textOf(*results[0].error->serverRecord()->payload), "x");
    }
    // The subscription still works.
    const auto last = told;
    get(other->saveRecords({noteRecord("afterwards", "z")}, {}));
    EXPECT_TRUE(until(loop, [&] { return told > last; }));
}

// The timeout is for silence: an answer may take many times as long while data flows.
TEST_F(PostgresCloudNetworkTest, IsPatientWithASlowLink) {
    const auto machine = farMachine({.response = 2s});
    EXPECT_EQ(get(machine->accountStatus({})), CloudAccountStatus::available);
    network().slowTo("800kbit");
    std::vector<CloudRecord> records;
    for (int i = 0; i < 800; ++i)
        records.push_back(noteRecord("r" + std::to_string(i), std::string(600, 'x')));
    for (const auto& result : get(machine->saveRecords(records, {}))) EXPECT_FALSE(result.error);
    EXPECT_EQ(everything(*machine).size(), records.size());
    network().hurry();
}

TEST_F(PostgresCloudNetworkTest, StopsAndEndsWhileNothingAnswers) {
    auto machine = farMachine({.connect = 1h, .response = 1h});
    EXPECT_EQ(get(machine->accountStatus({})), CloudAccountStatus::available);
    network().cut();
    std::stop_source stop;
    Running<CloudZoneChanges> stopped(machine->zoneChanges("", stop.get_token()));
    Running<CloudZoneChanges> left(machine->zoneChanges("", {}));
    loop.runFor(50ms);
    EXPECT_FALSE(stopped.ended());
    stop.request_stop();
    ASSERT_TRUE(await(loop, stopped));
    EXPECT_TRUE(stopped.cancelled());
    machine.reset();
    ASSERT_TRUE(await(loop, left));
    EXPECT_TRUE(left.cancelled());
    network().mend();
}

}  // namespace
}  // namespace quorvi::test
