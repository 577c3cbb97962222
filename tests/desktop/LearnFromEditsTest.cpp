#include <algorithm>
#include <csignal>

#include "tests/desktop/Desk.h"
#include "tests/support/Paths.h"

namespace quorvi::test {
namespace {

// The user mends a dictation in a real editor: "nice" becomes "nise".
class LearnFromEdits : public Desk {
protected:
    static constexpr auto mendedSentence = "The weather is nise today.";

    // The caret stands behind the sentence, where the paste has left it.
    void mend() {
        user.tap(key::left, 8);
        user.tap(key::backspace);
        user.type("s");
    }
    bool hasEvent(std::string_view code) const {
        const auto events = corrections.learningEvents();
        return std::ranges::find(events, code, &LearningEvent::code) != events.end();
    }
    bool untilEvent(std::string_view code) {
        return until([&] { return hasEvent(code); });
    }
    std::string trail() const {
        std::string codes;
        for (const auto& event : corrections.learningEvents()) codes += event.code + " ";
        return codes + "| " + corrections.learningStatus().english();
    }
    // What the original is written as, by the rules as they stand.
    bool knows(const std::string& original, const std::string& replacement) const {
        return corrections.rules().apply(original) == replacement;
    }

    std::optional<AXElement> dictateInto(const Command& command, const std::string& before = {},
                                         const std::string& after = {}) {
        const auto field = open(command);
        if (!field) return std::nullopt;
        startQuorvi();
        dictate();
        expectSentence(*field, before, after);
        EXPECT_TRUE(untilEvent("observer.started")) << trail();
        return field;
    }
    std::optional<AXElement> dictateIntoMousepad(const std::string& content = {}) {
        return dictateInto(mousepad(folder.write("note.txt", content)), {}, content);
    }
};

TEST_F(LearnFromEdits, AMendedWordBecomesARuleAndTheNextDictationComesOutRight) {
    const auto field = dictateIntoMousepad();
    ASSERT_TRUE(field);
    mend();
    ASSERT_TRUE(untilEvent("observer.saved")) << trail();
    EXPECT_EQ(corrections.learningStatus(), say::remembered("nice → nise"));
    EXPECT_EQ(model->stage(), DictationStage::learned);
    EXPECT_EQ(model->message().english(), "nice → nise");

    user.chord({key::leftControl}, key::end);
    dictate();
    EXPECT_TRUE(untilText(*field, std::string(mendedSentence) + mendedSentence))
        << reader.value(*field).value_or("(unreadable)");
    EXPECT_EQ(history.records()[0].text, mendedSentence);
}

TEST_F(LearnFromEdits, InEveryKindOfEditor) {
    const Command editors[] = {
        gnomeTextEditor(folder.write("note.txt", "")),
        {builtProgram("qt_fields"), "--empty"},
        chromium("<textarea autofocus></textarea>", folder),
        chromium("<div contenteditable id=e></div><script>e.focus()</script>", folder)};
    startQuorvi();
    for (const auto& command : editors) {
        const auto rulesBefore = corrections.rules().rules();
        const auto field = open(command);
        ASSERT_TRUE(field);
        dictate();
        expectSentence(*field);
        mend();
        EXPECT_TRUE(until([&] { return knows("nice", "nise"); })) << command[0] << ": " << trail();
        corrections.replaceFromSync(rulesBefore);
        editor = {};
    }
}

TEST_F(LearnFromEdits, ASwitchToAnotherWindowRightAfterIt) {
    ASSERT_TRUE(dictateIntoMousepad());
    mend();
    Process other({"zenity", "--info", "--text=hello"});
    user.bringToFront(other.pid());
    EXPECT_TRUE(untilEvent("observer.saved")) << trail();
    EXPECT_TRUE(hasEvent("observer.focusLeft"));
    EXPECT_TRUE(knows("nice", "nise"));
}

TEST_F(LearnFromEdits, TwoWordsWithAPauseAfterEach) {
    ASSERT_TRUE(dictateIntoMousepad());
    mend();
    ASSERT_TRUE(until([&] { return knows("nice", "nise"); })) << trail();
    user.tap(key::end);
    user.tap(key::left, 2);
    user.tap(key::backspace);
    user.type("e");
    EXPECT_TRUE(until([&] { return knows("today", "todey"); })) << trail();
    EXPECT_TRUE(knows("nice", "nise"));
}

TEST_F(LearnFromEdits, TextOfOtherScriptsAroundItShiftsNothing) {
    const std::string around = "👩‍👩‍👧 é שלום עולם 🇬🇷";
    ASSERT_TRUE(dictateIntoMousepad(around));
    mend();
    EXPECT_TRUE(until([&] { return knows("nice", "nise"); })) << trail();
}

TEST_F(LearnFromEdits, NothingFromADeletedText) {
    ASSERT_TRUE(dictateIntoMousepad());
    user.chord({key::leftControl}, key::a);
    user.tap(key::remove);
    EXPECT_TRUE(untilEvent("observer.cleared")) << trail();
    EXPECT_TRUE(hasEvent("observer.temporarilyEmpty"));
    EXPECT_EQ(corrections.learningStatus(), say::fieldCleared());
}

TEST_F(LearnFromEdits, NothingFromAnEditElsewhereInTheField) {
    ASSERT_TRUE(dictateIntoMousepad(" Kind regards"));
    user.chord({key::leftControl}, key::end);
    user.type("s");
    EXPECT_TRUE(untilEvent("observer.surroundingChanged")) << trail();
    EXPECT_EQ(corrections.learningStatus(), say::surroundingsChanged());
}

TEST_F(LearnFromEdits, NothingFromWhatTheProgramRewritesByItself) {
    ASSERT_TRUE(
        dictateInto(chromium("<textarea autofocus id=e></textarea><script>"
                             "e.oninput = () => setTimeout(() => "
                             "e.value = e.value.replace('nice', 'nise'), 2000)</script>",
                             folder)));
    EXPECT_TRUE(untilEvent("observer.noInput")) << trail();
    EXPECT_TRUE(knows("nice", "nice"));
}

TEST_F(LearnFromEdits, AnEditorThatIsClosedMeanwhileEndsTheWatch) {
    ASSERT_TRUE(dictateIntoMousepad());
    mend();
    editor.kill();
    EXPECT_TRUE(until([this] { return model->isIdle(); })) << trail();
    const auto field = open(mousepad(folder.write("note.txt", "")));
    ASSERT_TRUE(field);
    dictate();
    EXPECT_EQ(model->stage(), DictationStage::success) << model->message();
}

TEST_F(LearnFromEdits, AnEditorThatHangsMeanwhileEndsTheWatchAndHoldsNothingUp) {
    ASSERT_TRUE(dictateIntoMousepad());
    kill(editor.pid(), SIGSTOP);
    int ticks = 0;
    const auto ticking = scheduler.every(std::chrono::milliseconds(20), [&] { ++ticks; });
    EXPECT_TRUE(untilEvent("observer.unreadable")) << trail();
    EXPECT_TRUE(until([this] { return model->isIdle(); }));
    // Two seconds of an unreadable field, on a main thread that never waited for it.
    EXPECT_GT(ticks, 20);
    kill(editor.pid(), SIGCONT);
    EXPECT_TRUE(knows("nice", "nice"));
}

TEST_F(LearnFromEdits, TheInsertionTestTriesItWithoutADictation) {
    const auto field = open(mousepad(folder.write("note.txt", "")));
    ASSERT_TRUE(field);
    copy("what the user had copied");
    startQuorvi();
    model->armInsertionTest(AppModel::Sample::learning);
    ASSERT_TRUE(until([this] { return model->message() == say::testCountdown(9); }));
    user.tap(key::f8);
    ASSERT_TRUE(untilStage(DictationStage::success)) << model->message();
    EXPECT_TRUE(untilText(*field, "This is a test for oxygen."));
    EXPECT_EQ(clipboard(), "what the user had copied");
    user.tap(key::left, 2);
    user.tap(key::backspace);
    user.type("o");
    EXPECT_TRUE(until([&] { return knows("oxygen", "oxygon"); })) << trail();
    EXPECT_TRUE(history.records().empty());
}

}  // namespace
}  // namespace quorvi::test
