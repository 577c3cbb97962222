#include "Quorvi/insertion/TextInsertion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "Quorvi/insertion/PasteKeyboard.h"
#include "QuorviCore/text/Text.h"
#include "tests/fakes/FakeDesktop.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

constexpr pid_t editor = 100;

class TextInsertionTest : public testing::Test, protected VirtualTime, protected FakeDesktop {
protected:
    TextInsertionTest() : FakeDesktop(scheduler, scheduler) {
        setField("Hello world");
        poster.onPost = [this](const auto& post) {
            if (asks) pastedFrom = pasteboard.readBy(post.pid);
            if (receives) accessibility.type(field, pastedFrom);
        };
        pasteboard.copyText("mine");
        scheduler.settle();
    }

    void begin(std::string text = "big ") {
        lines.clear();
        poster.posts.clear();
        pasteboard.operations = pasteboard.writtenTexts = 0;
        stop = {};
        target = {};
        target = FieldInspector(scheduler, accessibility, workspace).capture(generation);
        if (wasBusy) target.element.reset(), target.selection.reset();
        target.takesText = committer.kind.has_value();
        TextInsertion::Request request{
            .learnCorrections = learns,
            .onVerifiedPaste = [this](const auto&) { lines.push_back("verified"); },
            .onLearningEvent =
                [this](const std::string& code, const TextInsertion::Counts& counts) {
                    lines.push_back(code);
                    for (const auto& [key, value] : counts)
                        lines.back() += " " + key + "=" + std::to_string(value);
                },
            .currentInputGeneration = [this] { return generation; }};
        task.emplace(
            insertion.insert(std::move(text), target, std::move(request), stop.get_token()));
        scheduler.settle();
    }
    void insert() {
        begin();
        scheduler.advance(5s);
    }
    std::string outcome() const { return task->value() ? "inserted" : task->failure(); }
    void setField(std::string text) {
        accessibility.set(field, "AXValue", std::move(text));
        accessibility.set(field, "AXSelectedTextRange", Utf16Range{6, 0});
    }
    void plugInTheKeyboard() {
        keyboard.install([](const TapEvent&) { return TapVerdict::pass; });
    }

    TextInsertion insertion{
        {scheduler, executor, accessibility, workspace, pasteboard, poster, keyboard, &committer}};
    AXElement field = openEditor(editor, "");
    InsertionTarget target;
    bool learns = true;
    bool wasBusy = false;  // the application, at the press: it told nothing of its field
    bool asks = true;
    bool receives = true;
    std::uint64_t generation = 0;
    std::string pastedFrom;
    std::vector<std::string> lines;
    std::stop_source stop;
    std::optional<Running<TextInsertion::Outcome>> task;
};

TEST_F(TextInsertionTest, PastesVerifiesAndGivesTheClipboardBackAfterTheWindow) {
    begin();
    ASSERT_EQ(poster.posts.size(), 1u);
    EXPECT_EQ(poster.posts[0].pid, editor);
    for (const auto& event : poster.posts[0].events)
        EXPECT_EQ(event.sourceUserData, quorviPasteEventMarker);
    EXPECT_EQ(pastedFrom, "big ");
    EXPECT_EQ(accessibility.text(field), "Hello big world");
    EXPECT_EQ(dataOf(pasteboard.contents(), "x-kde-passwordManagerHint"), "secret");

    scheduler.advance(850ms);
    EXPECT_EQ(pasteboard.text(), "big ") << "kept for the whole window";
    scheduler.advance(100ms);
    EXPECT_EQ(pasteboard.text(), "mine");
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "paste.before length=11 selectedLength=0 selection=6 transcriptLength=4",
                         "paste.verified", "verified"}));
    ASSERT_TRUE(task->value() && task->value()->verified);
    EXPECT_EQ(task->value()->verified->prefix(), "Hello ");
    EXPECT_EQ(task->value()->verified->suffix(), "world");
}

TEST_F(TextInsertionTest, AnApplicationThatWasBusyAtThePressTellsItsFieldLater) {
    wasBusy = true;
    insert();
    EXPECT_EQ(accessibility.text(field), "Hello big world");
    EXPECT_TRUE(task->value() && task->value()->verified);
}

TEST_F(TextInsertionTest, WithoutLearningTheFieldIsNeverRead) {
    learns = false;
    insert();
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(outcome(), "inserted");
    EXPECT_FALSE(task->value()->verified);
    EXPECT_TRUE(task->value()->isTaken);
    EXPECT_EQ(std::ranges::count(accessibility.queries, "AXValue"), 0);
    EXPECT_EQ(pasteboard.text(), "mine");
}

TEST_F(TextInsertionTest, ReportsWhyAPasteCouldNotBeVerified) {
    receives = false;
    insert();
    EXPECT_EQ(lines.back(), "paste.valueMismatch afterLength=11 expectedLength=15");
    accessibility.unset(field, "AXValue");
    insert();
    EXPECT_EQ(lines.back(), "paste.beforeUnavailable afterLength=-1 expectedLength=-1");
    setField("short");
    insert();
    EXPECT_EQ(lines.back(), "paste.valueMismatch afterLength=5 expectedLength=-1");
    setField("");
    accessibility.unset(field, "AXSelectedTextRange");
    begin("whole");
    accessibility.set(field, "AXValue", std::string("whole"));
    scheduler.advance(1s);
    EXPECT_EQ(lines[0], "paste.verifiedWholeField");
}

TEST_F(TextInsertionTest, WaitsForModifiersToBeReleasedAndGivesUpAfterTwoSeconds) {
    plugInTheKeyboard();
    keyboard.press(keyCode::leftShift);
    begin();
    scheduler.advance(1s);
    EXPECT_TRUE(poster.posts.empty());
    keyboard.release(keyCode::leftShift);
    scheduler.advance(50ms);
    EXPECT_EQ(poster.posts.size(), 1u);
    scheduler.advance(1s);

    setField("Hello world");
    keyboard.press(keyCode::rightOption);
    begin();
    stop.request_stop();
    scheduler.settle();
    EXPECT_NE(outcome(), "inserted");
    begin();
    scheduler.advance(2s);
    EXPECT_EQ(outcome(), say::modifierHeld().english());
    EXPECT_TRUE(poster.posts.empty());
    EXPECT_EQ(pasteboard.operations, 0) << "the clipboard was not touched";
}

TEST_F(TextInsertionTest, TypingAtAnyMomentBeforeThePasteStopsItAndGivesTheClipboardBack) {
    // Two turns after the last query, the clipboard is being written.
    for (const bool isLater : {false, true}) {
        int refused = -1, written = 0;
        do {
            accessibility.onQuery = [&, query = 0]() mutable {
                if (target.appName.empty() || query++ != refused) return;
                const auto type = [this] { generation += poster.posts.empty(); };
                isLater ? scheduler.post([=, this] { scheduler.post(type); }) : type();
            };
            ++refused;
            insert();
            EXPECT_EQ(pasteboard.text(), "mine");
            EXPECT_NE(poster.posts.empty(), outcome() == "inserted");
            written += pasteboard.writtenTexts;
        } while (outcome() == say::destinationChanged().english());
        EXPECT_EQ(outcome(), "inserted");
        EXPECT_GT(refused, 10);
        EXPECT_EQ(written > 1, isLater) << "some were refused during the write";
    }
}

TEST_F(TextInsertionTest, ATextThatTheTargetDidNotAskForStaysOnTheClipboardUntilItIsGivenBack) {
    asks = receives = false;
    for (const bool copies : {false, true}) {
        pasteboard.copyText("mine");
        begin();
        pasteboard.readBy(editor + 1);  // a clipboard manager
        scheduler.advance(5s);
        ASSERT_EQ(outcome(), "inserted");
        EXPECT_FALSE(task->value()->isTaken);
        EXPECT_EQ(pasteboard.text(), "big ");
        EXPECT_EQ(dataOf(pasteboard.contents(), "x-kde-passwordManagerHint").substr(0, 3), "(no");
        EXPECT_TRUE(insertion.holdsClipboard());
        if (copies) pasteboard.copyText("newer");
        insertion.restoreClipboard();
        scheduler.settle();
        EXPECT_EQ(pasteboard.text(), copies ? "newer" : "mine");
        EXPECT_FALSE(insertion.holdsClipboard());
    }
}

TEST_F(TextInsertionTest, TheKeystrokeWaitsForTheAttentionOfAProgramThatNeedsItButNotForLong) {
    poster.looksFirst = true;
    pasteboard.copyText("mine");
    pasteboard.readBy(editor);  // told when there is another one already
    begin();
    EXPECT_TRUE(poster.posts.empty());
    pasteboard.readBy(editor);
    scheduler.settle();
    EXPECT_EQ(poster.posts.size(), 1U);
    scheduler.advance(5s);
    begin();
    stop.request_stop();
    scheduler.settle();
    pasteboard.readBy(editor);
    begin();
    poster.available = false;
    scheduler.advance(60ms);
    EXPECT_EQ(outcome(), say::couldNotPaste().english()) << "the hook was lost meanwhile";
    EXPECT_EQ(pasteboard.text(), "mine");
}

TEST_F(TextInsertionTest, AClipboardThatItsOwnerGivesToNobodyDoesNotKeepTheTextFromTheUser) {
    pasteboard.ownerHangs = true;
    insert();
    ASSERT_EQ(outcome(), "inserted");
    EXPECT_TRUE(task->value()->isTaken);
    EXPECT_TRUE(task->value()->clipboardIsLost);
    EXPECT_EQ(pastedFrom, "big ");
}

TEST_F(TextInsertionTest, ClipboardTroubleIsReportedAndLosesNothing) {
    pasteboard.refusesWrites = true;
    insert();
    EXPECT_EQ(outcome(), say::clipboardUnavailable().english());
    pasteboard.refusesWrites = poster.available = false;
    accessibility.unset(field, "AXValue");
    insert();
    EXPECT_EQ(outcome(), say::couldNotPaste().english());
    EXPECT_EQ(pasteboard.text(), "mine");
}

TEST_F(TextInsertionTest, WithoutKeysAFieldIsAskedToPasteAndBelievedOnlyWhenItIsSeen) {
    poster.losesDesktop = true;
    accessibility.onSet = [this](const AXElement& element, std::string_view name) {
        if (receives && element == field && name == "AXPaste")
            accessibility.type(field, pasteboard.text());
    };
    insert();
    EXPECT_EQ(accessibility.text(field), "Hello big world");
    EXPECT_TRUE(task->value() && task->value()->verified && task->value()->isTaken);
    EXPECT_EQ(pasteboard.text(), "mine");
    receives = false;
    insert();
    EXPECT_FALSE(task->value()->isTaken);
    EXPECT_EQ(pasteboard.text(), "big ");
    accessibility.set(field, "AXSelectedTextRange", Utf16Range{0, 5});
    insert();
    EXPECT_EQ(outcome(), say::couldNotPaste().english()) << "a selection would stay";
    EXPECT_TRUE(poster.posts.empty());
}

using Delivery = CommitField::Delivery;

TEST_F(TextInsertionTest, AFieldThatTakesTextIsGivenItWithoutTheClipboard) {
    committer.kind = CommitField::Kind::text;
    committer.onCommit = [this](const auto& text) { accessibility.type(field, text); };
    insert();
    ASSERT_EQ(outcome(), "inserted");
    EXPECT_TRUE(task->value()->isTaken && task->value()->isCommitted && task->value()->verified);
    EXPECT_EQ(accessibility.text(field), "Hello big world");
    EXPECT_EQ(lines.back(), "verified");
    EXPECT_EQ(pasteboard.operations, 0);
    EXPECT_TRUE(poster.posts.empty());
    EXPECT_EQ(committer.uses, 0) << "the input method is let go";
    const Running<InsertionTarget> capturing(insertion.capture(generation, {}));
    scheduler.settle();
    EXPECT_TRUE(capturing.value()->takesText);
}

// Some programs leave the input method active there.
TEST_F(TextInsertionTest, AButtonIsNotGivenTheTextWhateverItsInputMethodSays) {
    committer.kind = CommitField::Kind::text;
    accessibility.set(field, "AXRole", std::string("AXButton"));
    accessibility.unset(field, "AXSelectedTextRange");
    asks = receives = false;
    insert();
    EXPECT_TRUE(committer.commits.empty());
    ASSERT_EQ(outcome(), "inserted");
    EXPECT_FALSE(task->value()->isTaken);
    EXPECT_EQ(pasteboard.text(), "big ");
    const Running<InsertionTarget> capturing(insertion.capture(generation, {}));
    scheduler.settle();
    EXPECT_FALSE(capturing.value()->takesText);
}

TEST_F(TextInsertionTest, TypingAtAnyMomentBeforeTheCommitStopsIt) {
    committer.kind = CommitField::Kind::text;
    committer.onCommit = [this](const auto& text) { accessibility.type(field, text); };
    int refused = -1;
    do {
        accessibility.onQuery = [&, query = 0]() mutable {
            if (!target.appName.empty() && query++ == refused)
                generation += committer.commits.empty();
        };
        ++refused;
        insert();
        EXPECT_NE(committer.commits.empty(), outcome() == "inserted");
    } while (outcome() == say::destinationChanged().english());
    EXPECT_GT(refused, 10);
    EXPECT_EQ(pasteboard.operations, 0);
}

TEST_F(TextInsertionTest, WhatMayHaveArrivedIsNeverSentAgainAndIsOnTheClipboardIfItIsNotSeen) {
    struct Row {
        CommitField::Kind kind;
        Delivery delivery;
        bool arrives, isReadable, learns;
        bool isTaken, isPasted;
    };
    using enum CommitField::Kind;
    for (const auto& row : {Row{text, Delivery::sent, false, true, true, false, false},
                            Row{text, Delivery::sent, false, true, false, true, false},
                            Row{text, Delivery::sent, false, false, true, true, false},
                            Row{terminal, Delivery::sent, false, true, true, true, false},
                            Row{text, Delivery::uncertain, true, true, true, true, false},
                            Row{text, Delivery::uncertain, false, false, true, false, false},
                            Row{text, Delivery::nothing, false, true, true, true, true}}) {
        setField("Hello world");
        if (!row.isReadable) accessibility.unset(field, "AXValue");
        committer.kind = row.kind;
        committer.delivery = row.delivery;
        committer.onCommit = [&](const auto& text) {
            if (row.arrives) accessibility.type(field, text);
        };
        learns = row.learns;
        insert();
        ASSERT_EQ(outcome(), "inserted");
        EXPECT_EQ(task->value()->isTaken, row.isTaken);
        EXPECT_EQ(!poster.posts.empty(), row.isPasted);
        EXPECT_EQ(pasteboard.text(), row.isTaken ? "mine" : "big ");
        insertion.restoreClipboard();
        scheduler.settle();
        EXPECT_EQ(pasteboard.text(), "mine");
    }
}

TEST_F(TextInsertionTest, APasswordIsGivenNothingAndATerminalNoEndOfALine) {
    committer.kind = CommitField::Kind::secret;
    insert();
    EXPECT_EQ(outcome(), say::notARegularField().english());
    const Running<InsertionTarget> capturing(insertion.capture(generation, {}));
    scheduler.settle();
    EXPECT_EQ(capturing.failure(), say::selectRegularField().english());
    committer.kind = CommitField::Kind::terminal;
    begin("ls\n");
    EXPECT_EQ(poster.posts.size(), 1U);
    committer.kind = CommitField::Kind::text;
    begin("ls\n\tls");
    EXPECT_EQ(committer.commits, std::vector<std::string>{"ls\n\tls"});
}

}  // namespace
}  // namespace quorvi::test
