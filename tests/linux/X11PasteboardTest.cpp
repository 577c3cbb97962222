#include "Quorvi/platform/linux/X11Pasteboard.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>

#include "Quorvi/platform/linux/LoopScheduler.h"
#include "tests/linux/support/ClipboardPrograms.h"
#include "tests/linux/support/ForeignOwner.h"
#include "tests/linux/support/ForeignRequestor.h"
#include "tests/linux/support/PasteboardContract.h"

namespace quorvi::test {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t twentyMegabytes = 20'000'000;

class X11Rig {
public:
    LoopScheduler& scheduler() { return scheduler_; }
    X11Pasteboard& pasteboard() { return *pasteboard_; }
    bool runUntil(const std::function<bool()>& condition) {
        // The change count grows on another thread without a turn of this one.
        for (int turn = 0; turn < 3000 && !condition(); ++turn)
            scheduler_.runUntil(condition, 20ms);
        return condition();
    }
    void foreignCopy(std::vector<PasteboardItem> items) { foreign(std::move(items), {}); }
    void foreignHang() { foreign(richItems(), {.silent = true}); }

    ForeignOwner& foreign(std::vector<PasteboardItem> items, ForeignOwner::Manners manners) {
        auto next = std::make_unique<ForeignOwner>(std::move(items), manners);
        owner = std::move(next);
        return *owner;
    }
    void open(X11Pasteboard::Options options) {
        pasteboard_.reset();
        pasteboard_ = std::make_unique<X11Pasteboard>(scheduler_, std::move(options));
    }
    void close() { pasteboard_.reset(); }

    std::unique_ptr<ForeignOwner> owner;

private:
    LoopScheduler scheduler_;
    std::unique_ptr<X11Pasteboard> pasteboard_ = std::make_unique<X11Pasteboard>(scheduler_);
};

std::filesystem::path scratch(const std::string& name) {
    return std::filesystem::path(std::getenv("QUORVI_SESSION_DIR")) / name;
}

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

void writeFile(const std::filesystem::path& file, const std::string& content) {
    std::ofstream(file, std::ios::binary) << content;
}

std::string readFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(X11, PasteboardContract, X11Rig);

namespace {

class X11PasteboardTest : public PasteboardFixture<X11Rig> {
protected:
    // Runs a program that takes the clipboard, until that has been noticed.
    void copyWith(const std::string& command) {
        const auto before = rig.pasteboard().changeCount();
        outputOf(command + " >/dev/null");  // xclip stays behind and would keep the pipe open
        EXPECT_TRUE(rig.runUntil([&] { return rig.pasteboard().changeCount() > before; }));
    }
};

TEST_F(X11PasteboardTest, ProgramsReadTheTranscriptInEveryTextType) {
    writeText("Grüße, naïve café");
    for (const auto* type : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "TEXT"})
        EXPECT_EQ(outputOf("xclip -o -selection clipboard -t '" + std::string(type) + "'"),
                  "Grüße, naïve café")
            << type;
    EXPECT_EQ(outputOf("xclip -o -selection clipboard -t STRING"),
              "Gr\xFC\xDF\x65, na\xEFve caf\xE9");
    writeText("Καλημέρα");
    EXPECT_EQ(outputOf("xclip -o -selection clipboard"), "Καλημέρα");
    EXPECT_EQ(outputOf("xclip -o -selection clipboard -t TARGETS"),
              "TARGETS\nMULTIPLE\nTIMESTAMP\nUTF8_STRING\ntext/plain;charset=utf-8\ntext/plain\n"
              "TEXT\n");
}

TEST_F(X11PasteboardTest, AnImageOfTwentyMegabytesSurvivesADictation) {
    const auto image = randomBytes(twentyMegabytes);
    writeFile(scratch("image.png"), image);
    copyWith("xclip -i -selection clipboard -t image/png " + scratch("image.png").string());
    const auto backup = read();
    ASSERT_TRUE(dataOf(backup, "image/png") == image);
    const auto count = writeText("transcript", TranscriptVisibility::hiddenFromHistory);
    ASSERT_TRUE(count);
    EXPECT_EQ(outputOf("xclip -o -selection clipboard"), "transcript");
    rig.pasteboard().restore(*count, backup);
    read();
    outputOf("xclip -o -selection clipboard -t image/png > " + scratch("back.png").string());
    EXPECT_TRUE(readFile(scratch("back.png")) == image);
}

TEST_F(X11PasteboardTest, LargeDataInPiecesAndInOtherFormatsComesBackByteForByte) {
    std::vector<PasteboardItem> items{
        {{representation("application/x-numbers", randomBytes(400'000), 32, "INTEGER"),
          representation("application/x-shorts", randomBytes(400'002), 16),
          representation("text/html", randomBytes(300'001))}}};
    rig.foreign(items, {.pieceSize = 4096});
    const auto backup = read();
    EXPECT_EQ(backup, items);
    write(backup);
    ForeignRequestor reader;
    ASSERT_TRUE(reader.request("application/x-numbers"));
    reader.take();
    ASSERT_EQ(reader.type, reader.atom("INCR"));
    Bytes whole;
    for (auto piece = reader.nextPiece(); !piece.empty(); piece = reader.nextPiece()) {
        EXPECT_EQ(reader.type, reader.atom("INTEGER"));
        whole.insert(whole.end(), piece.begin(), piece.end());
    }
    EXPECT_TRUE(whole == *items[0].representations[0].data);
}

TEST_F(X11PasteboardTest, ASlowOwnerIsReadWholeWithinTheTimeForEverything) {
    const std::vector<PasteboardItem> items{
        {{representation("UTF8_STRING", "slow"), representation("text/html", "<i>slow</i>")}}};
    rig.foreign(items, {.delay = 700ms});
    EXPECT_EQ(read(), items);
}

TEST_F(X11PasteboardTest, ALateAnswerIsNeverTakenForAnotherOne) {
    rig.open({.display = {}, .progressLimit = 300ms, .totalLimit = 30s});
    ForeignOwner former({{{representation("UTF8_STRING", "former")}}},
                        {.delay = 400ms, .delayedType = "UTF8_STRING"});
    EXPECT_EQ(outcomeOf(rig.pasteboard().read({})).error, unavailableSentence);
    // The former owner's answer comes while this one takes its time.
    rig.foreign({{{representation("UTF8_STRING", "newer")}}},
                {.delay = 200ms, .delayedType = "UTF8_STRING"});
    Outcome<std::vector<PasteboardItem>> reading;
    for (int attempt = 0; attempt < 100 && !reading.value; ++attempt)
        reading = outcomeOf(rig.pasteboard().read({}));
    ASSERT_TRUE(reading.value) << reading.error;
    EXPECT_EQ(dataOf(*reading.value, "UTF8_STRING"), "newer");
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

TEST_F(X11PasteboardTest, ATypeThatItsOwnerRefusesIsLeftOut) {
    rig.foreign(richItems(), {.refusedType = "text/html"});
    auto expected = richItems();
    std::erase_if(expected[0].representations,
                  [](const auto& one) { return one.type == "text/html"; });
    EXPECT_EQ(read(), expected);
}

TEST_F(X11PasteboardTest, WhatIsNotOfferedIsRefused) {
    writeText("text");
    ForeignRequestor reader;
    EXPECT_FALSE(reader.request("image/png"));
    EXPECT_FALSE(reader.request("DELETE"));
    EXPECT_TRUE(reader.request("UTF8_STRING"));
    write({});
    EXPECT_FALSE(reader.request("UTF8_STRING"));
}

TEST_F(X11PasteboardTest, RequestorsMayAskForSeveralTypesAtOnceAndForTheTime) {
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
    EXPECT_TRUE(reader.request("SAVE_TARGETS"));
    EXPECT_TRUE(reader.take().empty());
}

TEST_F(X11PasteboardTest, ATransferThatHasBegunGoesOnWhileAHangingOwnerIsRead) {
    const auto image = randomBytes(2'000'000);
    write({{{representation("image/png", image)}}});
    ForeignRequestor reader;
    ASSERT_TRUE(reader.request("image/png"));
    rig.foreignHang();
    Outcome<std::vector<PasteboardItem>> reading;
    begin(rig.pasteboard().read({}), reading);
    ASSERT_TRUE(rig.runUntil([&] { return rig.owner->requests() > 0; }));
    reader.take();
    std::string whole;
    for (auto piece = reader.nextPiece(); !piece.empty(); piece = reader.nextPiece())
        whole.append(piece.begin(), piece.end());
    EXPECT_TRUE(whole == image);
    EXPECT_TRUE(rig.runUntil([&] { return reading.isDone(); }));
    EXPECT_EQ(reading.error, unavailableSentence);
}

TEST_F(X11PasteboardTest, TheCounterSeesAnOwnerComeAndGo) {
    const auto before = rig.pasteboard().changeCount();
    rig.foreignCopy(richItems());
    EXPECT_TRUE(rig.runUntil([&] { return rig.pasteboard().changeCount() == before + 1; }));
    rig.owner.reset();
    EXPECT_TRUE(rig.runUntil([&] { return rig.pasteboard().changeCount() == before + 2; }));
    EXPECT_TRUE(read().empty());
}

TEST_F(X11PasteboardTest, ThePrimarySelectionIsNeverTouched) {
    outputOf("printf primary | xclip -i -selection primary >/dev/null");
    const auto count = writeText("transcript");
    ASSERT_TRUE(count);
    rig.pasteboard().restore(*count, {});
    read();
    EXPECT_EQ(outputOf("xclip -o -selection primary"), "primary");
}

TEST_F(X11PasteboardTest, AnEditorPastesTheTranscriptAndItsCopyIsReadBack) {
    const auto file = scratch("note.txt");
    writeFile(file, "");
    RunningProgram editor({"mousepad", "--disable-server", file.string()});
    outputOf("xdotool search --sync --onlyvisible --class mousepad windowfocus --sync");
    writeText("Grüße — dictated", TranscriptVisibility::hiddenFromHistory);
    outputOf("xdotool key ctrl+v");
    // The editor pastes when it has the data; what it copies before that is nothing.
    std::string copied;
    for (int attempt = 0; attempt < 60 && copied.empty(); ++attempt) {
        const auto before = rig.pasteboard().changeCount();
        outputOf("xdotool key ctrl+a key ctrl+c");
        rig.scheduler().runUntil([&] { return rig.pasteboard().changeCount() > before; }, 500ms);
        if (rig.pasteboard().changeCount() > before) copied = dataOf(read(), "UTF8_STRING");
    }
    EXPECT_EQ(copied, "Grüße — dictated");
}

TEST_F(X11PasteboardTest, ALostServerIsAFailureUntilThereIsOneAgain) {
    // A number far from those that servers choose by themselves, since it is needed twice.
    const auto display = ":" + std::to_string(20'000 + getpid() % 20'000);
    const std::vector<std::string> command{"Xvfb",      display, "-displayfd", "1",
                                           "-nolisten", "tcp",   "-noreset"};
    auto server = std::make_unique<RunningProgram>(command);
    server->readLine();
    rig.open({.display = display});
    ASSERT_TRUE(writeText("transcript"));
    const auto count = rig.pasteboard().changeCount();
    server->kill();
    EXPECT_EQ(outcomeOf(rig.pasteboard().read({})).error, unavailableSentence);
    EXPECT_EQ(writeText("transcript"), std::nullopt);
    EXPECT_EQ(rig.pasteboard().changeCount(), count);

    server = std::make_unique<RunningProgram>(command);
    server->readLine();
    // Nothing of what was ours is there any more, so a restore has nothing to replace.
    rig.pasteboard().restore(count, richItems());
    EXPECT_TRUE(read().empty());
    EXPECT_EQ(writeText("again"), count + 2);
    rig.close();
}

TEST_F(X11PasteboardTest, EndingDoesNotWaitForAHangingOwner) {
    rig.open({.display = {}, .progressLimit = 24h, .totalLimit = 24h});
    rig.foreignHang();
    Outcome<std::vector<PasteboardItem>> reading;
    begin(rig.pasteboard().read({}), reading);
    ASSERT_TRUE(rig.runUntil([&] { return rig.owner->requests() > 0; }));
    rig.close();
    EXPECT_TRUE(rig.runUntil([&] { return reading.isDone(); }));
    EXPECT_EQ(reading.error, unavailableSentence);
}

}  // namespace
}  // namespace quorvi::test
