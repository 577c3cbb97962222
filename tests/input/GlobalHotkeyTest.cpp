#include "Quorvi/input/GlobalHotkey.h"

#include <gtest/gtest.h>

#include <string>

#include "Quorvi/insertion/PasteKeyboard.h"
#include "tests/fakes/FakeAccessibility.h"
#include "tests/fakes/FakeKeyEventTap.h"
#include "tests/fakes/VirtualScheduler.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

constexpr KeyCode keyA = 0;
constexpr KeyCode f8 = 100;
using keyCode::escape, keyCode::rightOption;

class GlobalHotkeyTest : public testing::Test {
protected:
    GlobalHotkeyTest() {
        hotkey.onTransition = [this](bool down) { heard += down ? "press " : "release "; };
        hotkey.onCancel = [this] { heard += "cancel "; };
        hotkey.onInterruption = [this] { heard += "interruption "; };
        EXPECT_TRUE(hotkey.start());
    }
    ~GlobalHotkeyTest() override { EXPECT_EQ(keyboard.contradictions, std::vector<std::string>{}); }

    std::string takeHeard() {
        scheduler.settle();
        return std::exchange(heard, {});
    }
    std::string heardAfter(Duration time) {
        scheduler.advance(time);
        return takeHeard();
    }
    // The hook sleeps while the key is let go.
    void missTheReleaseOf(KeyCode key) {
        keyboard.press(key);
        keyboard.setEnabled(false);
        keyboard.release(key);
        keyboard.setEnabled(true);
        EXPECT_TRUE(hotkey.start());
    }

    VirtualScheduler scheduler;
    FakeKeyEventTap keyboard;
    FakeAccessibility accessibility{scheduler};
    GlobalHotkey hotkey{scheduler, keyboard, accessibility};
    std::string heard;
};

TEST_F(GlobalHotkeyTest, ACombinationIsSwallowedAndReportedOnceDespiteAutoRepeat) {
    hotkey.setShortcut(Hotkey::f8);
    for (int repeat = 0; repeat < 5; ++repeat) keyboard.press(f8);
    EXPECT_EQ(takeHeard(), "press ");
    keyboard.release(f8);
    EXPECT_EQ(takeHeard(), "release ");
    EXPECT_EQ(keyboard.swallowed.size(), 6u);
    EXPECT_EQ(hotkey.inputGeneration(), 0u);
    keyboard.press(f8);
    hotkey.setMode(DictationMode::toggle);
    EXPECT_EQ(takeHeard(), "") << "queued before a reset";
}

TEST_F(GlobalHotkeyTest, TheShortcutsKeyWithOtherModifiersIsOrdinaryInput) {
    hotkey.setShortcut(Hotkey::f8);
    keyboard.press(keyCode::leftControl);
    keyboard.tap(f8);
    keyboard.release(keyCode::leftControl);
    EXPECT_EQ(takeHeard(), "");
    EXPECT_TRUE(keyboard.swallowed.empty());
    EXPECT_EQ(hotkey.inputGeneration(), 1u);

    // Let go of a modifier while the shortcut is held: the release is still the shortcut's.
    hotkey.setShortcut(Hotkey::commandShiftSpace);
    keyboard.press(keyCode::leftCommand);
    keyboard.press(keyCode::leftShift);
    keyboard.press(keyCode::space);
    keyboard.release(keyCode::leftShift);
    keyboard.release(keyCode::space);
    EXPECT_EQ(takeHeard(), "press release ");
}

TEST_F(GlobalHotkeyTest, AHeldModifierStartsAfterTheDelayAndATapOfItTogglesAtOnce) {
    keyboard.press(rightOption);
    EXPECT_EQ(heardAfter(299ms), "");
    EXPECT_EQ(heardAfter(1ms), "press ");
    keyboard.release(rightOption);
    EXPECT_EQ(takeHeard(), "release ");
    keyboard.tap(rightOption);
    EXPECT_EQ(heardAfter(1s), "") << "a short press";
    EXPECT_EQ(hotkey.inputGeneration(), 0u);

    hotkey.setMode(DictationMode::toggle);
    keyboard.tap(rightOption);
    EXPECT_EQ(takeHeard(), "press ");
    keyboard.press(rightOption);
    keyboard.tap(keyA);
    keyboard.release(rightOption);
    EXPECT_EQ(takeHeard(), "");
}

TEST_F(GlobalHotkeyTest, ACombinationWithTheModifierNeverStartsAndCancelsWhatItStarted) {
    const std::pair<const char*, std::function<void()>> chords[] = {
        {"key", [&] { keyboard.tap(keyA); }},
        {"click", [&] { keyboard.click(); }},
        {"scroll", [&] { keyboard.scroll(); }},
        {"other modifier", [&] { keyboard.tap(keyCode::leftShift); }}};
    for (const auto& [name, chord] : chords) {
        SCOPED_TRACE(name);
        keyboard.press(rightOption);
        chord();
        EXPECT_EQ(heardAfter(1s), "");
        keyboard.release(rightOption);
        keyboard.press(rightOption);
        scheduler.advance(300ms);
        chord();
        keyboard.release(rightOption);
        EXPECT_EQ(takeHeard(), "press cancel ");
    }
    keyboard.pressButton();
    keyboard.press(rightOption);
    EXPECT_EQ(heardAfter(1s), "") << "with a mouse button held";
}

TEST_F(GlobalHotkeyTest, EscapeCancelsOnceAndOnlyWhileEnabledAndBare) {
    keyboard.tap(escape);
    hotkey.setCancelEnabled(true);
    keyboard.press(escape);
    keyboard.press(escape);
    hotkey.setCancelEnabled(false);  // as the controller does when it has cancelled
    keyboard.release(escape);
    EXPECT_EQ(takeHeard(), "cancel ");
    EXPECT_EQ(keyboard.swallowed.size(), 3u);

    hotkey.setCancelEnabled(true);
    keyboard.press(keyCode::leftShift);
    keyboard.tap(escape);
    EXPECT_EQ(takeHeard(), "");
}

TEST_F(GlobalHotkeyTest, AReleaseThatWasMissedIsNoticedUnlessItIsStillOnItsWay) {
    hotkey.setShortcut(Hotkey::f8);
    missTheReleaseOf(f8);
    EXPECT_EQ(heardAfter(100ms), "press interruption ");
    missTheReleaseOf(f8);
    keyboard.deliver({TapEventType::keyUp, f8});
    EXPECT_EQ(heardAfter(1s), "press release ");
}

}  // namespace
}  // namespace quorvi::test
