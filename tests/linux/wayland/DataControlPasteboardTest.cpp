#include "Quorvi/platform/linux/wayland/clipboard/DataControlPasteboard.h"

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/Process.h"
#include "tests/support/contracts/PasteboardContract.h"

namespace quorvi::test {
namespace {

// Another program is another clipboard object, on a connection of its own.
class DataControlRig {
public:
    // A representation is a MIME type alone.
    static std::vector<PasteboardItem> kept(std::vector<PasteboardItem> items) {
        for (auto& item : items)
            for (auto& one : item.representations) {
                one.encoding = one.type;
                one.format = 8;
            }
        return items;
    }

    DataControlPasteboard& pasteboard() { return pasteboard_; }
    bool runUntil(const std::function<bool()>& condition) { return until(scheduler_, condition); }
    void foreignCopy(std::vector<PasteboardItem> items) {
        const Running<std::optional<std::int64_t>> copying(other_.write(std::move(items)));
        EXPECT_TRUE(runUntil([&] { return copying.ended(); }));
    }
    pid_t foreignRead() {
        const Running<std::vector<PasteboardItem>> reading(other_.read({}));
        EXPECT_TRUE(runUntil([&] { return reading.ended(); }));
        return 0;  // nobody is told who reads
    }
    void foreignHang() {
        const auto before = pasteboard_.changeCount();
        hanging_ = Process({"wl-copy", "--foreground", "text"});
        EXPECT_TRUE(runUntil([&] { return pasteboard_.changeCount() > before; }));
        hanging_.freeze();
    }

private:
    LoopScheduler scheduler_;
    DataControlPasteboard pasteboard_{scheduler_};
    DataControlPasteboard other_{scheduler_};
    Process hanging_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(DataControl, PasteboardContract, DataControlRig);

namespace {

using DataControlPasteboardTest = PasteboardFixture<DataControlRig>;

TEST_F(DataControlPasteboardTest, ForeignProgramsReadEveryTypeAndTwentyMegabytesComeBack) {
    writeText("Grüße");
    for (const auto* type : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "TEXT"})
        EXPECT_EQ(shell("wl-paste --no-newline --type '" + std::string(type) + "'"), "Grüße");
    const auto before = rig.pasteboard().changeCount();
    shell(
        "head -c 20000000 /dev/urandom >$TMPDIR/picture; wl-copy --type image/png "
        "<$TMPDIR/picture");
    EXPECT_TRUE(rig.runUntil([&] { return rig.pasteboard().changeCount() > before; }));
    const auto backup = read();
    const auto count = writeText("transcript", TranscriptVisibility::hiddenFromHistory);
    ASSERT_TRUE(count);
    rig.pasteboard().restore(*count, backup);
    read();
    EXPECT_EQ(shell("wl-paste --type image/png | cmp - $TMPDIR/picture && echo same"), "same\n");
}

}  // namespace
}  // namespace quorvi::test
