#include <gtest/gtest.h>

#include "tests/fakes/FakeCloudDatabase.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/contracts/CloudContract.h"

namespace quorvi::test {
namespace {

struct FakeCloudRig : CloudRig {
    std::array<CloudDatabase*, 3> databases() override { return {&first_, &second_, &stranger_}; }
    bool runUntil(const std::function<bool()>& done) override {
        for (int tick = 0; tick < 1000 && !done(); ++tick)
            scheduler_.advance(std::chrono::milliseconds(10));
        return done();
    }

    VirtualScheduler scheduler_;
    FakeCloudServer server_{scheduler_};
    FakeCloudDatabase first_{scheduler_, server_, "anna"};
    FakeCloudDatabase second_{scheduler_, server_, "anna"};
    FakeCloudDatabase stranger_{scheduler_, server_, "mallory"};
};

INSTANTIATE_TEST_SUITE_P(Fake, CloudContract, testing::Values(makeCloudRig<FakeCloudRig>));

}  // namespace
}  // namespace quorvi::test
