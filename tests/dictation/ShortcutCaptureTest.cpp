#include "tests/dictation/DictationFixture.h"

namespace quorvi::test {
namespace {

class ShortcutCaptureTest : public DictationTest {
protected:
    void begin() {
        model->beginShortcutCapture();
        EXPECT_TRUE(model->isChoosingShortcut());
        EXPECT_TRUE(model->hotkey().suspended());
    }
    void expectEnded(const Hotkey& shortcut) {
        EXPECT_FALSE(model->isChoosingShortcut());
        EXPECT_FALSE(model->hotkey().suspended());
        EXPECT_FALSE(localKeys.isObserved());
        EXPECT_EQ(model->shortcut(), shortcut);
    }
};

TEST_F(ShortcutCaptureTest, TakesTheNextSuitableKeyAndStoresIt) {
    begin();
    keyboard.press(f8);
    settle();
    EXPECT_EQ(model->stage(), Stage::idle) << "the present shortcut dictates nothing meanwhile";
    keyboard.release(f8);
    EXPECT_TRUE(localKeys.press(0, modifierFlag::shift, "a"));
    EXPECT_EQ(model->message(), say::unsuitableShortcut());
    EXPECT_TRUE(model->isChoosingShortcut() && model->hasRefusedShortcut());
    EXPECT_TRUE(localKeys.press(96, 0, "F5"));
    expectEnded({96, 0, "F5"});

    begin();
    EXPECT_FALSE(model->hasRefusedShortcut());
    EXPECT_FALSE(localKeys.changeFlags(keyCode::rightOption,
                                       modifierFlag::option | modifierFlag::rightOption));
    EXPECT_TRUE(localKeys.changeFlags(keyCode::rightOption, 0));
    expectEnded(Hotkey::rightOption);
}

TEST_F(ShortcutCaptureTest, EndsWithoutAChangeByEscapeResetAndQuitting) {
    begin();
    EXPECT_TRUE(localKeys.press(keyCode::escape, 0, "Esc"));
    expectEnded(Hotkey::f8);
    begin();
    model->resetDictation();
    expectEnded(Hotkey::f8);
    begin();
    model->shutdown();
    expectEnded(Hotkey::f8);
}

}  // namespace
}  // namespace quorvi::test
