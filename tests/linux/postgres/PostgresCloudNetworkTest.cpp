#include <gtest/gtest.h>
#include <sched.h>

#include <filesystem>

#include "tests/support/Process.h"
#include "tests/support/cloud/PostgresMachines.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;
namespace code = cloudErrorCode;

// Another network, with a link to it that can be cut and slowed. Moves the calling thread, and the
// threads and programs that it starts, into a network of its own, so it must come first. Needs
// root.
class FarNetwork {
public:
    static constexpr const char* farAddress = "10.78.0.2";

    FarNetwork() {
        if (::unshare(CLONE_NEWNET) != 0) throw std::runtime_error("no network of one's own");
        holder_ = Process({"unshare", "--net", "sleep", "infinity"});
        const auto network = [](const std::string& process) {
            std::error_code gone;
            return std::filesystem::read_symlink("/proc/" + process + "/ns/net", gone);
        };
        const auto pid = std::to_string(holder_.pid());
        if (!eventually([&] { return network(pid) != network("thread-self"); }))
            throw std::runtime_error("no far network");
        outputOf({"sh", "-c",
                  "ip link set lo up && ip link add near type veth peer name far netns " + pid +
                      " && ip addr add 10.78.0.1/24 dev near && ip link set near up"});
        runThere("ip addr add 10.78.0.2/24 dev far && ip link set lo up && ip link set far up");
    }
    // The beginning of a command that runs there.
    std::vector<std::string> prefix() const {
        return {"nsenter", "--target", std::to_string(holder_.pid()), "--net", "--"};
    }
    // Packets are dropped.
    void cut() const { runThere("ip link set far down"); }
    void mend() const { runThere("ip link set far up"); }
    // Limits what both ways carry, such as 1mbit.
    void slowTo(const std::string& rate) const {
        const auto limit = " root tbf burst 16kb latency 400ms rate " + rate;
        outputOf({"sh", "-c", "tc qdisc replace dev near" + limit});
        runThere("tc qdisc replace dev far" + limit);
    }

private:
    void runThere(const std::string& command) const {
        auto words = prefix();
        words.insert(words.end(), {"sh", "-c", command});
        outputOf(words);
    }

    Process holder_;
};

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
        other = machine(one.socketAddress(account));
        get(other->saveZone("Notes", {}));
    }
    FarNetwork& network() const { return *network_; }
    std::unique_ptr<PostgresCloudDatabase> farMachine(PostgresTimes times) {
        return machine(server_->address(account, "?sslmode=prefer"), times);
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
    const auto far =
        farMachine({.connect = 1s, .response = 1s, .firstRetry = 50ms, .lastRetry = 200ms});
    int told = 0;
    auto subscription = far->onRemoteChange([&] { ++told; });
    get(far->saveSubscription("changes", {}));

    network().cut();
    Running<std::vector<CloudSaveResult>> saving(
        far->saveRecords({noteRecord("in the cut", "x")}, {}));
    EXPECT_TRUE(isOffline(code(far->zoneChanges("", {}))));
    ASSERT_TRUE(ends(saving));
    EXPECT_FALSE(saving.value());
    EXPECT_TRUE(isOffline(code(far->accountStatus({})))) << "offline is no missing account";
    get(other->saveRecords({noteRecord("meanwhile", "y")}, {}));

    const auto before = told;
    network().mend();
    EXPECT_TRUE(runUntil([&] { return told > before; })) << "nobody was told after the cut";
    EXPECT_EQ(textOf(*everything(*far)["meanwhile"].payload), "y");
    // The failed save may have been committed: then it is there completely, and once.
    const auto results = get(far->saveRecords({noteRecord("in the cut", "x")}, {}));
    if (results.at(0).error) {
        EXPECT_EQ(results[0].error->code(), code::serverRecordChanged);
        EXPECT_EQ(textOf(*results[0].error->serverRecord()->payload), "x");
    }
    // The subscription still works.
    const auto last = told;
    get(other->saveRecords({noteRecord("afterwards", "z")}, {}));
    EXPECT_TRUE(runUntil([&] { return told > last; }));
}

// The timeout is for silence: an answer may take many times as long while data flows.
TEST_F(PostgresCloudNetworkTest, IsPatientWithASlowLink) {
    const auto far = farMachine({.response = 2s});
    EXPECT_EQ(get(far->accountStatus({})), CloudAccountStatus::available);
    network().slowTo("800kbit");
    std::vector<CloudRecord> records;
    for (int i = 0; i < 800; ++i)
        records.push_back(noteRecord("r" + std::to_string(i), std::string(600, 'x')));
    for (const auto& result : get(far->saveRecords(records, {}))) EXPECT_FALSE(result.error);
    EXPECT_EQ(everything(*far).size(), records.size());
    network().slowTo("1gbit");
}

}  // namespace
}  // namespace quorvi::test
