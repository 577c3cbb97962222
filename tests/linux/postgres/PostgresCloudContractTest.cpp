#include <gtest/gtest.h>

#include "tests/support/cloud/PostgresMachines.h"
#include "tests/support/contracts/CloudContract.h"

namespace quorvi::test {
namespace {

PostgresServer& server() {
    static PostgresServer one;
    return one;
}

struct PostgresRig : CloudRig {
    std::array<CloudDatabase*, 3> databases() override { return {&first_, &second_, &stranger_}; }
    bool runUntil(const std::function<bool()>& done) override { return until(loop_, done); }

    explicit PostgresRig(PostgresTimes times = {}) : times_(times) {}

    const PostgresTimes times_;
    LoopScheduler loop_;
    const std::string user_ = newAccount(server());
    PostgresCloudDatabase first_{loop_, server().address(user_), password("pass word"), times_};
    PostgresCloudDatabase second_{loop_, server().address(user_), password("pass word"), times_};
    PostgresCloudDatabase stranger_{loop_, server().address(newAccount(server())),
                                    password("pass word"), times_};
};

// A server without notifications is polled.
struct SilentPostgresRig : PostgresRig {
    SilentPostgresRig() : PostgresRig({.poll = std::chrono::milliseconds(50)}) {
        server().sql("UPDATE quorvi.server SET push = false");
    }
    ~SilentPostgresRig() override { server().sql("UPDATE quorvi.server SET push = true"); }
};

INSTANTIATE_TEST_SUITE_P(Postgres, CloudContract, testing::Values(makeCloudRig<PostgresRig>));

class SilentPostgres : public CloudContract {};
INSTANTIATE_TEST_SUITE_P(Polled, SilentPostgres, testing::Values(makeCloudRig<SilentPostgresRig>));

TEST_P(SilentPostgres, IsAskedForChanges) {
    makeZone(first);
    get(second.saveSubscription("changes", {}));
    int told = 0;
    auto subscription = second.onRemoteChange([&] { ++told; });
    for (int i = 0; i < 2; ++i) {
        const auto before = told;
        // The first poll may come after this change; then it takes a later one to notify.
        EXPECT_TRUE(rig->runUntil([&, n = 0]() mutable {
            if (n++ % 50 == 0)
                saved(first, noteRecord(std::to_string(i) + "." + std::to_string(n), "x"));
            return told > before;
        }));
    }
}

}  // namespace
}  // namespace quorvi::test
