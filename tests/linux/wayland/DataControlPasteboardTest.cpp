#include "Quorvi/platform/linux/wayland/clipboard/DataControlPasteboard.h"

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/Paths.h"
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

    DataControlPasteboard& pasteboard() { return *pasteboard_; }
    void open(std::string keeper = {}) { pasteboard_.emplace(scheduler_, std::move(keeper)); }
    void close() { pasteboard_.reset(); }
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
        const auto before = pasteboard_->changeCount();
        hanging_ = Process({"wl-copy", "--foreground", "text"});
        EXPECT_TRUE(runUntil([&] { return pasteboard_->changeCount() > before; }));
        hanging_.freeze();
    }

private:
    LoopScheduler scheduler_;
    std::optional<DataControlPasteboard> pasteboard_{std::in_place, scheduler_};
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

TEST_F(DataControlPasteboardTest, AKeeperGivesBackWhatWasThereWhenTheProgramIsGone) {
    const auto keeper = "pgrep -r R,S,D -P " + std::to_string(getpid()) + " quorvi-clipboar";
    const auto standIn = [&] {
        rig.open(builtProgram("quorvi-clipboard-keeper"));
        const Writing writing(rig.pasteboard().writeText(
            "transcript", TranscriptVisibility::hiddenFromHistory, read()));
        EXPECT_TRUE(countOf(writing));
        EXPECT_NE(shell(keeper), "");
    };
    foreignCopy(rich());
    for (const bool isAsked : {false, true}) {
        standIn();
        if (isAsked) {
            const Running<bool> handing(rig.pasteboard().handOver());
            EXPECT_TRUE(ends(handing) && *handing.value());
        } else {
            rig.close();
            rig.open();
        }
        EXPECT_TRUE(eventually([&] { return read() == rich(); }));
    }
    // What somebody has copied meanwhile stays.
    standIn();
    foreignCopy(textItems("newer"));
    rig.close();
    EXPECT_TRUE(eventually([&] { return shell(keeper).empty(); })) << "it has nothing to keep";
    rig.open();
    EXPECT_EQ(read(), textItems("newer"));
}

}  // namespace
}  // namespace quorvi::test
