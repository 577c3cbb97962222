#include "Quorvi/platform/linux/x11/clipboard/X11Pasteboard.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <functional>
#include <random>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/clipboard/ForeignOwner.h"
#include "tests/support/clipboard/ForeignRequestor.h"
#include "tests/support/contracts/PasteboardContract.h"

namespace quorvi::test {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t twentyMegabytes = 20'000'000;

class X11Rig {
public:
    X11Pasteboard& pasteboard() { return *pasteboard_; }
    bool runUntil(const std::function<bool()>& condition) { return until(scheduler, condition); }
    void foreignCopy(std::vector<PasteboardItem> items) { foreign(std::move(items), {}); }
    pid_t foreignRead() {
        EXPECT_TRUE(reader.request("UTF8_STRING"));
        return getpid();
    }
    void foreignHang() { foreign(richItems(), {.silent = true}); }

    ForeignOwner& foreign(std::vector<PasteboardItem> items, ForeignOwner::Manners manners) {
        auto next = std::make_unique<ForeignOwner>(std::move(items), manners);
        owner = std::move(next);
        return *owner;
    }
    void open(X11Pasteboard::Options options) {
        pasteboard_.reset();
        pasteboard_ = std::make_unique<X11Pasteboard>(scheduler, std::move(options));
    }
    void close() { pasteboard_.reset(); }

    std::unique_ptr<ForeignOwner> owner;
    ForeignRequestor reader;
    LoopScheduler scheduler;

private:
    std::unique_ptr<X11Pasteboard> pasteboard_ = std::make_unique<X11Pasteboard>(scheduler);
};

std::string randomBytes(std::size_t size) {
    std::mt19937_64 random(20);
    std::string bytes("\x89PNG\r\n\x1a\n");
    bytes.resize(size);
    for (std::size_t i = 8; i + 8 <= size; i += 8) {
        const auto word = random();
        std::memcpy(&bytes[i], &word, 8);
    }
    return bytes;
}

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(X11, PasteboardContract, X11Rig);

namespace {

class X11PasteboardTest : public PasteboardFixture<X11Rig> {
protected:
    TestFolder folder;

    // Runs a program that takes the clipboard, until that has been noticed.
    void copyWith(const std::string& command) {
        const auto before = rig.pasteboard().changeCount();
        shell(command + " >/dev/null");  // xclip stays behind and would keep the pipe open
        EXPECT_TRUE(rig.runUntil([&] { return rig.pasteboard().changeCount() > before; }));
    }
};

TEST_F(X11PasteboardTest, ProgramsReadTheTranscriptInEveryTextType) {
    writeText("Grüße, naïve café");
    for (const auto* type : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "TEXT"})
        EXPECT_EQ(shell("xclip -o -selection clipboard -t '" + std::string(type) + "'"),
                  "Grüße, naïve café")
            << type;
    EXPECT_EQ(shell("xclip -o -selection clipboard -t STRING"), "Gr\xFC\xDF\x65, na\xEFve caf\xE9");
    writeText("Καλημέρα");
    EXPECT_EQ(shell("xclip -o -selection clipboard"), "Καλημέρα");
}

TEST_F(X11PasteboardTest, AnImageOfTwentyMegabytesAndThePrimarySelectionSurviveADictation) {
    const auto image = randomBytes(twentyMegabytes);
    shell("printf primary | xclip -i -selection primary >/dev/null");
    copyWith("xclip -i -selection clipboard -t image/png " + folder.write("image.png", image));
    const auto backup = read();
    ASSERT_TRUE(dataOf(backup, "image/png") == image);
    const auto count = writeText("transcript", TranscriptVisibility::hiddenFromHistory);
    ASSERT_TRUE(count);
    EXPECT_EQ(shell("xclip -o -selection clipboard"), "transcript");
    rig.pasteboard().restore(*count, backup);
    read();
    EXPECT_TRUE(shell("xclip -o -selection clipboard -t image/png") == image);
    EXPECT_EQ(shell("xclip -o -selection primary"), "primary");
}

TEST_F(X11PasteboardTest, WhatASlowOwnerGivesInPiecesComesBackByteForByte) {
    const std::vector<PasteboardItem> given{
        {{representation("application/x-numbers", randomBytes(400'000), 32, "INTEGER"),
          representation("application/x-shorts", randomBytes(400'002), 16),
          representation("text/html", randomBytes(300'001)), representation("TEXT", "text")}}};
    auto offered = given;
    offered[0].representations.push_back(representation("image/png", "refused when asked for"));
    // Together slower than the limit of one answer.
    rig.foreign(offered, {.delay = 300ms, .refusedType = "image/png", .pieceSize = 4096});
    const auto backup = read();
    EXPECT_EQ(backup, given);
    write(backup);
    ForeignRequestor reader;
    ASSERT_TRUE(reader.request("application/x-numbers"));
    EXPECT_TRUE(reader.takePieces() == *given[0].representations[0].data);
    EXPECT_EQ(reader.type, reader.atom("INTEGER"));
}

TEST_F(X11PasteboardTest, AKeeperGivesBackWhatWasThereWhenTheProgramIsGone) {
    auto mine = richItems();
    mine[0].representations.push_back(representation("image/bmp", randomBytes(twentyMegabytes)));
    const auto stand = [&](std::string text) {
        const Writing writing(rig.pasteboard().writeText(
            std::move(text), TranscriptVisibility::hiddenFromHistory, read()));
        EXPECT_TRUE(countOf(writing));
    };
    const auto keeper = "pgrep -r R,S,D -P " + std::to_string(getpid()) + " quorvi-clipboar";
    rig.open({.keeper = builtProgram("quorvi-clipboard-keeper")});
    read();
    foreignCopy(mine);
    stand("transcript");
    // One that has died is replaced at the next need.
    shell("kill -9 $(" + keeper + ")");
    EXPECT_TRUE(eventually([&] { return shell(keeper).empty(); }));
    rig.owner.reset();
    foreignCopy(mine);
    stand("transcript");
    EXPECT_NE(shell(keeper), "");
    rig.close();
    rig.open({});
    EXPECT_TRUE(eventually([&] { return read() == mine; }));

    // What somebody has copied meanwhile stays.
    rig.open({.keeper = builtProgram("quorvi-clipboard-keeper")});
    stand("transcript");
    foreignCopy(textItems("newer"));
    rig.close();
    EXPECT_TRUE(eventually([&] { return shell(keeper).empty(); })) << "it has nothing to keep";
    rig.open({});
    EXPECT_EQ(read(), textItems("newer"));
}

TEST_F(X11PasteboardTest, AnOwnerThatDiesAmidItsDataLeavesAnEmptyClipboard) {
    rig.foreign({{{representation("UTF8_STRING", "text"),
                   representation("image/png", randomBytes(500'000))}}},
                {.dyingPiece = 2});
    const auto before = rig.pasteboard().changeCount();
    EXPECT_TRUE(read().empty());
    EXPECT_GT(rig.pasteboard().changeCount(), before);
    EXPECT_TRUE(writeText("works"));
}

TEST_F(X11PasteboardTest, RequestorsGetWhatIsOfferedSeveralTypesAtOnceAndTheTime) {
    write({{{representation("UTF8_STRING", "text"), representation("text/html", "<b>")}}});
    ForeignRequestor reader;
    const auto text = reader.atom("P_TEXT"), html = reader.atom("P_HTML");
    reader.put({reader.atom("UTF8_STRING"), text, reader.atom("image/png"), reader.atom("P_PNG"),
                reader.atom("text/html"), html});
    ASSERT_TRUE(reader.request("MULTIPLE"));
    EXPECT_EQ(reader.takeUnits()[3], 0u);  // there is no image
    EXPECT_EQ(reader.take(text), (Bytes{'t', 'e', 'x', 't'}));
    EXPECT_EQ(reader.take(html), (Bytes{'<', 'b', '>'}));

    ASSERT_TRUE(reader.request("TIMESTAMP"));
    const auto since = reader.takeUnits();
    ASSERT_EQ(since.size(), 1u);
    EXPECT_NE(since[0], 0u);
    EXPECT_FALSE(reader.request("UTF8_STRING", since[0] - 1));  // before it was ours
    EXPECT_TRUE(reader.request("UTF8_STRING", since[0]));
    EXPECT_FALSE(reader.request("image/png"));
}

TEST_F(X11PasteboardTest, NeitherATransferNorTheEndWaitsForAHangingOwner) {
    rig.open({.display = {}, .progressLimit = 24h, .totalLimit = 24h});
    const auto image = randomBytes(2'000'000);
    write({{{representation("image/png", image)}}});
    ForeignRequestor reader;
    ASSERT_TRUE(reader.request("image/png"));
    rig.foreignHang();
    const Reading reading(rig.pasteboard().read({}));
    ASSERT_TRUE(rig.runUntil([&] { return rig.owner->requests() > 0; }));
    EXPECT_TRUE(reader.takePieces() == Bytes(image.begin(), image.end()));
    rig.close();
    EXPECT_TRUE(ends(reading));
    EXPECT_EQ(reading.failure(), unavailableSentence);
}

}  // namespace
}  // namespace quorvi::test
