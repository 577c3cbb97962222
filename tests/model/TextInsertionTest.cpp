#include "Quorvi/insertion/TextInsertion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "Quorvi/insertion/PasteKeyboard.h"
#include "QuorviCore/text/Text.h"
#include "tests/fakes/FakeAccessibility.h"
#include "tests/fakes/FakeKeyEventPoster.h"
#include "tests/fakes/FakePasteboard.h"
#include "tests/fakes/FakeWorkspace.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

constexpr pid_t editor = 100;

class TextInsertionTest : public testing::Test {
protected:
    TextInsertionTest() {
        workspace.setFrontmost(RunningApplication{editor, "Editor"});
        accessibility.setWindow(editor, accessibility.make(editor, "AXWindow"));
        accessibility.focus(field);
        accessibility.set(field, "AXSelectedTextRange", Utf16Range{6, 0});
        poster.onPost = [this](const auto&) {
            pastedFrom = pasteboard.text();
            if (receives) accessibility.type(field, pastedFrom);
        };
        pasteboard.copyText("mine");
        scheduler.settle();
    }

    void begin(std::string text = "big ") {
        lines.clear();
        poster.posts.clear();
        stop = {};
        target = FieldInspector(scheduler, accessibility, workspace).capture(generation);
        TextInsertion::Request request{
            .learnCorrections = learns,
            .onVerifiedPaste = [this](const CorrectionContext&) { log("verified"); },
            .onLearningEvent =
                [this](const std::string& code, const TextInsertion::Counts& counts) {
                    std::string line = code;
                    for (const auto& [key, value] : counts)
                        line += " " + key + "=" + std::to_string(value);
                    log(line);
                },
            .currentInputGeneration = [this] { return generation; }};
        task.emplace(
            insertion.insert(std::move(text), target, std::move(request), stop.get_token()));
        scheduler.settle();
    }
    std::string outcome() const { return task->value() ? "inserted" : task->failure(); }
    void log(std::string line) { lines.push_back(std::move(line)); }

    VirtualScheduler scheduler;
    TurnExecutor executor{scheduler};
    FakeAccessibility accessibility{scheduler};
    FakeWorkspace workspace;
    FakePasteboard pasteboard{scheduler};
    FakeKeyEventTap keyboard;
    FakeKeyEventPoster poster{scheduler};
    TextInsertion insertion{
        {scheduler, executor, accessibility, workspace, pasteboard, poster, keyboard}};
    AXElement field = accessibility.makeText(editor, "Hello world");
    InsertionTarget target;
    bool learns = true;
    bool receives = true;
    std::uint64_t generation = 0;
    std::string pastedFrom;
    std::vector<std::string> lines;
    std::stop_source stop;
    std::optional<Running<std::optional<CorrectionContext>>> task;
};

TEST_F(TextInsertionTest, PastesVerifiesAndGivesTheClipboardBackAfterTheWindow) {
    begin();
    ASSERT_EQ(poster.posts.size(), 1u);
    EXPECT_EQ(poster.posts[0].pid, editor);
    for (const auto& event : poster.posts[0].events)
        EXPECT_EQ(event.sourceUserData, quorviPasteEventMarker);
    EXPECT_EQ(pastedFrom, "big ");
    EXPECT_EQ(accessibility.text(field), "Hello big world");
    bool hinted = false;
    for (const auto& representation : pasteboard.contents().at(0).representations)
        hinted |= representation.type == "x-kde-passwordManagerHint";
    EXPECT_TRUE(hinted) << "clipboard managers are told to leave it out";

    scheduler.advance(850ms);
    EXPECT_EQ(pasteboard.text(), "big ") << "kept for the whole window";
    scheduler.advance(100ms);
    EXPECT_EQ(pasteboard.text(), "mine");
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "paste.before length=11 selectedLength=0 selection=6 transcriptLength=4",
                         "paste.verified", "verified"}));
    ASSERT_TRUE(task->value() && *task->value());
    EXPECT_EQ((*task->value())->prefix(), "Hello ");
    EXPECT_EQ((*task->value())->suffix(), "world");
}

TEST_F(TextInsertionTest, WithoutLearningTheFieldIsNeverRead) {
    learns = false;
    begin();
    scheduler.advance(1s);
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(outcome(), "inserted");
    EXPECT_FALSE(task->value()->has_value());
    EXPECT_TRUE(accessibility.queriesOf("AXValue").empty());
    EXPECT_EQ(pasteboard.text(), "mine");
}

TEST_F(TextInsertionTest, ReportsWhyAPasteCouldNotBeVerified) {
    const auto lastLine = [this] {
        begin();
        scheduler.advance(1s);
        return lines.back();
    };
    receives = false;
    EXPECT_EQ(lastLine(), "paste.valueMismatch afterLength=11 expectedLength=15");
    accessibility.unset(field, "AXValue");
    EXPECT_EQ(lastLine(), "paste.beforeUnavailable afterLength=-1 expectedLength=-1");
    accessibility.set(field, "AXValue", std::string("short"));
    EXPECT_EQ(lastLine(), "paste.valueMismatch afterLength=5 expectedLength=-1");
    accessibility.set(field, "AXValue", std::string());
    accessibility.unset(field, "AXSelectedTextRange");
    begin("whole");
    accessibility.set(field, "AXValue", std::string("whole"));
    scheduler.advance(1s);
    EXPECT_EQ(lines[0], "paste.verifiedWholeField");
}

TEST_F(TextInsertionTest, WaitsForModifiersToBeReleasedAndGivesUpAfterTwoSeconds) {
    keyboard.install([](const TapEvent&) { return TapVerdict::pass; });
    keyboard.setEnabled(true);
    keyboard.press(keyCode::leftShift);
    begin();
    scheduler.advance(1s);
    EXPECT_TRUE(poster.posts.empty());
    keyboard.release(keyCode::leftShift);
    scheduler.advance(50ms);
    EXPECT_EQ(poster.posts.size(), 1u);
    scheduler.advance(1s);

    accessibility.set(field, "AXSelectedTextRange", Utf16Range{0, 0});
    keyboard.press(keyCode::rightOption);
    pasteboard.journal.clear();
    begin();
    scheduler.advance(2s);
    EXPECT_EQ(outcome(),
              "A modifier key is still held. Release it and copy the transcript from Quorvi.");
    EXPECT_TRUE(pasteboard.journal.empty()) << "the clipboard was not touched";
}

TEST_F(TextInsertionTest, TypingAtAnyMomentBeforeThePasteStopsIt) {
    const auto changed =
        "The destination changed while dictating. Your transcript is ready to copy in Quorvi.";
    for (const auto* attribute : {"AXFocusedWindow", "AXSelectedTextRange", "AXValue"}) {
        accessibility.onQuery = [this, attribute](const FakeAccessibility::Query& query) {
            if (query.attribute == attribute && task && !target.appName.empty()) ++generation;
        };
        const auto before = generation;
        begin();
        scheduler.advance(1s);
        accessibility.onQuery = nullptr;
        if (generation == before) continue;
        EXPECT_EQ(outcome(), changed) << "typed during a query for " << attribute;
        EXPECT_TRUE(poster.posts.empty());
        EXPECT_EQ(pasteboard.text(), "mine");
    }
}

TEST_F(TextInsertionTest, InputWhileTheClipboardIsWrittenStopsThePasteAndGivesItBack) {
    int looks = 0;
    accessibility.onQuery = [&](const FakeAccessibility::Query& query) {
        // The caret is looked at by both validations; after the second comes the write.
        if (query.attribute != "AXSelectedTextRange" || target.appName.empty() || ++looks != 2)
            return;
        scheduler.post([this] { scheduler.post([this] { ++generation; }); });
    };
    begin();
    scheduler.advance(1s);
    EXPECT_EQ(generation, 1u);
    EXPECT_TRUE(poster.posts.empty());
    EXPECT_EQ(outcome(),
              "The destination changed while dictating. Your transcript is ready to copy in Quorvi.");
    EXPECT_EQ(std::ranges::count(pasteboard.journal, "write text"), 1) << "it was the write";
    EXPECT_EQ(pasteboard.text(), "mine");
}

TEST_F(TextInsertionTest, ANewerCopyOfTheUserWinsAndAnEmptyClipboardComesBackEmpty) {
    begin();
    scheduler.advance(200ms);
    pasteboard.copyText("newer");
    scheduler.advance(1s);
    EXPECT_EQ(pasteboard.text(), "newer");
    pasteboard.copy({});
    begin();
    scheduler.advance(1s);
    EXPECT_TRUE(pasteboard.contents().empty()) << "an empty clipboard is empty again";
}

TEST_F(TextInsertionTest, CancellingAtAnyMomentGivesTheClipboardBackAndPastesNothingLater) {
    for (auto moment : {0ms, 50ms, 400ms, 850ms}) {
        begin();
        scheduler.advance(moment);
        stop.request_stop();
        scheduler.settle();
        EXPECT_EQ(pasteboard.text(), "mine") << moment.count() << " ms after the paste";
        EXPECT_NE(outcome(), "inserted");
        accessibility.set(field, "AXValue", std::string("Hello world"));
        accessibility.set(field, "AXSelectedTextRange", Utf16Range{6, 0});
    }
    keyboard.install([](const TapEvent&) { return TapVerdict::pass; });
    keyboard.setEnabled(true);
    keyboard.press(keyCode::leftShift);
    begin();
    stop.request_stop();
    keyboard.release(keyCode::leftShift);
    scheduler.advance(3s);
    EXPECT_TRUE(poster.posts.empty());
}

TEST_F(TextInsertionTest, ClipboardTroubleIsReportedAndLosesNothing) {
    const auto unavailable =
        "The clipboard is unavailable. Your transcript is ready to copy in Quorvi.";
    pasteboard.refusesWrites = true;
    begin();
    EXPECT_EQ(outcome(), unavailable);
    EXPECT_EQ(pasteboard.text(), "mine");
    pasteboard.refusesWrites = false;

    pasteboard.ownerHangs = true;
    begin();
    scheduler.advance(5s);
    EXPECT_EQ(outcome(), unavailable);
    EXPECT_TRUE(poster.posts.empty());
    pasteboard.ownerHangs = false;

    poster.available = false;
    begin();
    EXPECT_EQ(outcome(), "Could not send Paste. Your transcript is ready to copy in Quorvi.");
    EXPECT_EQ(pasteboard.text(), "mine");
}

}  // namespace
}  // namespace quorvi::test
