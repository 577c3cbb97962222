#include "tests/desktop/Desk.h"

namespace quorvi::test {
namespace {

class Controls : public Desk {
protected:
    void SetUp() override {
        field = open(mousepad(folder.write("note.txt", "")));
        ASSERT_TRUE(field);
    }
    void TearDown() override { shell("setxkbmap us"); }

    void layout(const char* command) {
        shell(command);
        wait(std::chrono::milliseconds(300));  // toolkits reload the keymap in their own time
    }
    std::optional<AXElement> field;
};

TEST_F(Controls, HoldingRightAltAlone) {
    useShortcut(Hotkey::rightOption);
    startQuorvi();
    dictate(key::rightAlt);
    expectSentence(*field);

    // A combination with it is the application's, and starts nothing.
    user.press(key::rightAlt);
    user.tap(key::a);
    wait(std::chrono::milliseconds(500));
    user.release(key::rightAlt);
    EXPECT_EQ(model->stage(), DictationStage::success);
}

TEST_F(Controls, TappingTheShortcutToStartAndToFinish) {
    useShortcut(Hotkey::rightControl, DictationMode::toggle);
    startQuorvi();
    user.tap(key::rightControl);
    ASSERT_TRUE(untilStage(DictationStage::recording));
    speak();
    user.tap(key::rightControl);
    ASSERT_TRUE(until([this] { return isBusy(model->stage()); })) << model->message();
    ASSERT_TRUE(untilDone());
    expectSentence(*field);
}

TEST_F(Controls, AHeldCombinationRepeatsWithoutReachingTheEditor) {
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
    expectSentence(*field);
}

TEST_F(Controls, EscapeCancelsAndNeverReachesTheEditor) {
    copy("mine");
    startQuorvi();
    user.press(key::f8);
    ASSERT_TRUE(untilStage(DictationStage::recording));
    user.tap(key::escape);
    ASSERT_TRUE(untilStage(DictationStage::idle));
    EXPECT_EQ(model->message(), say::dictationCancelled());
    user.release(key::f8);
    wait(std::chrono::milliseconds(200));
    EXPECT_EQ(clipboard(), "mine");

    // While it is being inserted: the text is there, and the clipboard comes back at once.
    record();
    user.release(key::f8);
    ASSERT_TRUE(untilStage(DictationStage::inserting));
    user.tap(key::escape);
    ASSERT_TRUE(untilStage(DictationStage::idle));
    EXPECT_TRUE(until([] { return clipboard() == "mine"; }));

    dictate();
    EXPECT_EQ(model->stage(), DictationStage::success) << model->message();
}

TEST_F(Controls, PastesUnderEveryLayout) {
    startQuorvi();
    for (const char* command :
         {"setxkbmap gr", "setxkbmap us,gr -option grp:alt_shift_toggle", "setxkbmap ru",
          "setxkbmap us -variant dvorak", "setxkbmap de -variant neo"}) {
        layout(command);
        dictate();
        SCOPED_TRACE(command);
        expectSentence(*field);
        // Empty the editor for the next one.
        layout("setxkbmap us");
        user.chord({key::leftControl}, key::a);
        user.tap(key::remove);
        ASSERT_TRUE(untilText(*field, ""));
    }
}

}  // namespace
}  // namespace quorvi::test
