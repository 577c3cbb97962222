#include "tests/desktop/Desk.h"
#include "tests/support/clipboard/ForeignOwner.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

class BadDays : public Desk {
protected:
    void SetUp() override { ASSERT_TRUE(openMousepad("one two")); }

    // The words that could not be inserted are on the clipboard.
    void expectManualPaste() {
        ASSERT_TRUE(untilDone());
        EXPECT_EQ(model->stage(), DictationStage::clipboard) << model->message();
        EXPECT_EQ(model->message(), say::textCopied());
        EXPECT_EQ(clipboard(), writtenSentence);
        EXPECT_EQ(history.records().size(), 1u);
        EXPECT_EQ(fieldText(), "one two");
    }
};

TEST_F(BadDays, AClipboardOwnerThatHangsCostsNoWords) {
    ForeignOwner owner(textItems("mine"), {.silent = true});
    startQuorvi();
    dictate();
    expectSentence(*openField, {}, "one two");
    EXPECT_EQ(model->message(), say::oldClipboardLost());
}

TEST_F(BadDays, TheCaretMovedWhileTheServiceWorked) {
    startQuorvi();
    record();
    release();
    // The editor moves its caret without the user, as a running script would.
    user.tap(key::end);
    expectManualPaste();
}

TEST_F(BadDays, AnotherWindowCameToTheFront) {
    const auto first = user.activeWindow();
    Process other(mousepad(folder.write("other.txt", "")));
    ASSERT_TRUE(user.waitForWindowOf(other.pid()));
    const auto second = user.activeWindow();
    user.activate(first);
    ASSERT_TRUE(user.waitForWindowOf(editor.pid()));
    startQuorvi();
    record();
    user.activate(second);
    ASSERT_TRUE(user.waitForWindowOf(other.pid()));
    release();
    expectManualPaste();
    const auto otherField = reader.focused(other.pid());
    ASSERT_TRUE(otherField);
    EXPECT_EQ(reader.value(*otherField), "");
}

TEST_F(BadDays, AHungApplicationFreezesNothingAndGetsItsTextOrTheClipboardDoes) {
    startQuorvi();
    record();
    editor.freeze();
    release();
    // The loop goes on turning while the application is asked.
    int turns = 0;
    const auto ticks = scheduler.every(5ms, [&] { ++turns; });
    ASSERT_TRUE(untilDone());
    EXPECT_GT(turns, 20);
    EXPECT_EQ(model->stage(), DictationStage::clipboard) << model->message();
    editor.thaw();
    EXPECT_EQ(clipboard(), writtenSentence);

    user.press(key::f8);
    ASSERT_TRUE(untilStage(DictationStage::recording)) << "usable again: " << model->message();
    user.release(key::f8);
}

TEST_F(BadDays, AHeldCombinationRepeatsWithoutReachingTheEditor) {
    useShortcut({0, modifierFlag::control | modifierFlag::shift, "⌃⇧A"});
    startQuorvi();
    shell("xset r rate 100 50");
    user.press(key::leftControl);
    user.press(key::leftShift);
    record(key::a);
    EXPECT_EQ(model->stage(), DictationStage::recording) << "a repeat looked like a release";
    release(key::a);
    user.release(key::leftShift);
    user.release(key::leftControl);
    ASSERT_TRUE(untilDone());
    expectSentence(*openField, {}, "one two");
}

TEST_F(BadDays, EscapeCancelsAndNeverReachesTheEditor) {
    copy("mine");
    useShortcut(Hotkey::rightControl, DictationMode::toggle);
    startQuorvi();
    const auto begin = [&] {
        user.tap(key::rightControl);
        ASSERT_TRUE(untilStage(DictationStage::recording)) << model->message();
    };
    begin();
    user.tap(key::escape);
    ASSERT_TRUE(untilStage(DictationStage::idle));
    EXPECT_EQ(model->message(), say::dictationCancelled());

    // While the text is being inserted: it is there, and the clipboard is given back at once.
    begin();
    speak();
    user.tap(key::rightControl);
    ASSERT_TRUE(untilStage(DictationStage::inserting));
    user.tap(key::escape);
    ASSERT_TRUE(untilStage(DictationStage::idle));
    EXPECT_TRUE(until([] { return clipboard() == "mine"; }));

    begin();
    speak();
    user.tap(key::rightControl);
    EXPECT_TRUE(untilStage(DictationStage::success)) << model->message();
}

}  // namespace
}  // namespace quorvi::test
