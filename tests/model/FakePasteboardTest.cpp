#include "tests/fakes/FakePasteboard.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/fakes/VirtualScheduler.h"
#include "tests/linux/support/PasteboardContract.h"

namespace quorvi::test {

namespace {

using namespace std::chrono_literals;

class FakeRig {
public:
    VirtualScheduler& scheduler() { return scheduler_; }
    FakePasteboard& pasteboard() { return pasteboard_; }
    bool runUntil(const std::function<bool()>& condition) {
        for (int turn = 0; turn < 1000 && !condition(); ++turn) scheduler_.advance(10ms);
        return condition();
    }
    void foreignCopy(std::vector<PasteboardItem> items) { pasteboard_.copy(std::move(items)); }
    void foreignHang() { pasteboard_.ownerHangs = true; }

private:
    VirtualScheduler scheduler_;
    FakePasteboard pasteboard_{scheduler_};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(InMemory, PasteboardContract, FakeRig);

namespace {

using FakePasteboardTest = PasteboardFixture<FakeRig>;

TEST_F(FakePasteboardTest, ARefusedWriteLeavesEverythingAsItIs) {
    rig.pasteboard().copyText("before");
    rig.pasteboard().refusesWrites = true;
    EXPECT_EQ(writeText("transcript"), std::nullopt);
    EXPECT_EQ(rig.pasteboard().text(), "before");
    EXPECT_EQ(rig.pasteboard().changeCount(), 1);
    EXPECT_EQ(rig.pasteboard().journal.back(), "write refused");
}

TEST_F(FakePasteboardTest, AHangingOwnerCostsThreeSecondsAndWhatWasAskedForAfterItWaits) {
    rig.foreignHang();
    Outcome<std::vector<PasteboardItem>> reading;
    Outcome<std::optional<std::int64_t>> writing;
    begin(rig.pasteboard().read({}), reading);
    begin(rig.pasteboard().write(richItems()), writing);
    rig.scheduler().advance(2999ms);
    EXPECT_FALSE(reading.isDone() || writing.isDone());
    rig.scheduler().advance(1ms);
    EXPECT_TRUE(reading.isDone() && writing.isDone());
}

}  // namespace
}  // namespace quorvi::test
