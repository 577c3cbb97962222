#include <algorithm>

#include "tests/desktop/Desk.h"

namespace quorvi::test {
namespace {

// The user mends a dictation in a real editor: "nice" becomes "nise".
class LearnFromEdits : public Desk {
protected:
    bool hasEvent(std::string_view code) const {
        const auto events = corrections.learningEvents();
        return std::ranges::find(events, code, &LearningEvent::code) != events.end();
    }
    // Its date tells whether an event came later; the log keeps only the last few.
    Date lastWatch() const {
        Date last{};
        for (const auto& event : corrections.learningEvents())
            if (event.code == "observer.started") last = event.date;
        return last;
    }
    bool untilEvent(std::string_view code) {
        return until([&] { return hasEvent(code); });
    }
    std::string trail() const {
        std::string codes;
        for (const auto& event : corrections.learningEvents()) codes += event.code + " ";
        return codes + "| " + corrections.learningStatus().english();
    }
    bool writesNiceAs(const std::string& word) const {
        return corrections.rules().apply("nice") == word;
    }
    // Nobody corrects a word faster.
    void lookAtIt() { wait(std::chrono::milliseconds(400)); }
    void dictateInto(const Command& command) {
        ASSERT_TRUE(open(command));
        if (!model) startQuorvi();
        const auto before = lastWatch();
        dictate();
        expectSentence(*openField);
        ASSERT_TRUE(until([&] { return lastWatch() > before; })) << trail();
        lookAtIt();
    }
};

TEST_F(LearnFromEdits, AMendedWordBecomesARuleInEveryKindOfEditor) {
    const auto note = folder.write("note.txt", "");
    for (const auto& command :
         {mousepad(note),
          gnomeTextEditor(note),
          {builtProgram("qt_fields"), "--empty"},
          chromium("<textarea autofocus></textarea>", folder),
          chromium("<div contenteditable id=e></div><script>e.focus()</script>", folder)}) {
        const auto rulesBefore = corrections.rules().rules();
        dictateInto(command);
        mendSentence();
        ASSERT_TRUE(until([&] { return writesNiceAs("nise"); })) << command[0] << ": " << trail();
        EXPECT_EQ(model->message().english(), "nice → nise");
        if (command[0] == "mousepad") {
            dictate();
            EXPECT_EQ(history.records()[0].text, "The weather is nise today.");
        }
        corrections.replaceFromSync(rulesBefore);
    }
}

TEST_F(LearnFromEdits, ASwitchToAnotherWindowRightAfterIt) {
    dictateInto(mousepad(folder.write("note.txt", "")));
    mendSentence();
    Process other({"zenity", "--info", "--text=hello"});
    user.bringToFront(other.pid());
    EXPECT_TRUE(untilEvent("observer.saved")) << trail();
    EXPECT_TRUE(hasEvent("observer.focusLeft"));
    EXPECT_TRUE(writesNiceAs("nise"));
}

TEST_F(LearnFromEdits, NothingFromWhatTheProgramRewritesByItself) {
    dictateInto(
        chromium("<textarea autofocus id=e></textarea><script>e.oninput = () => setTimeout("
                 "() => e.value = e.value.replace('nice', 'nise'), 2000)</script>",
                 folder));
    EXPECT_TRUE(untilEvent("observer.noInput")) << trail();
    EXPECT_TRUE(writesNiceAs("nice"));
}

// As one that redraws its window when the shortcut takes the keyboard.
TEST_F(LearnFromEdits, FromAnEditorThatIsBusyAtThePress) {
    ASSERT_TRUE(open(mousepad(folder.write("note.txt", ""))));
    startQuorvi();
    editor.freeze();
    user.press(key::f8);
    ASSERT_TRUE(untilStage(DictationStage::recording));
    editor.thaw();
    speak();
    release();
    ASSERT_TRUE(untilDone());
    lookAtIt();
    mendSentence();
    EXPECT_TRUE(until([&] { return writesNiceAs("nise"); })) << trail();
}

TEST_F(LearnFromEdits, AnEditorThatHangsMeanwhileEndsTheWatchAndHoldsNothingUp) {
    dictateInto(mousepad(folder.write("note.txt", "")));
    editor.freeze();
    int ticks = 0;
    const auto ticking = scheduler.every(std::chrono::milliseconds(20), [&] { ++ticks; });
    EXPECT_TRUE(untilEvent("observer.unreadable")) << trail();
    EXPECT_TRUE(until([this] { return model->isIdle(); }));
    // Two seconds of an unreadable field, on a main thread that never waited for it.
    EXPECT_GT(ticks, 20);
    editor.thaw();
    EXPECT_TRUE(writesNiceAs("nice"));
}

}  // namespace
}  // namespace quorvi::test
