#include "Quorvi/input/GlobalHotkey.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

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
        hotkey.onTransition = [this](bool down) { heard.push_back(down ? "press" : "release"); };
        hotkey.onCancel = [this] { heard.push_back("cancel"); };
        hotkey.onInterruption = [this] { heard.push_back("interruption"); };
        EXPECT_TRUE(hotkey.start());
    }
    ~GlobalHotkeyTest() override { EXPECT_EQ(keyboard.contradictions, std::vector<std::string>{}); }

    std::vector<std::string> takeHeard() {
        scheduler.settle();
        return std::exchange(heard, {});
    }
    using Heard = std::vector<std::string>;

    VirtualScheduler scheduler;
    FakeKeyEventTap keyboard;
    FakeAccessibility accessibility{scheduler};
    GlobalHotkey hotkey{scheduler, keyboard, accessibility};
    std::vector<std::string> heard;
};

TEST_F(GlobalHotkeyTest, ACombinationIsSwallowedAndReportedOnceDespiteAutoRepeat) {
    hotkey.setShortcut(Hotkey::f8);
    keyboard.press(f8);
    for (int repeat = 0; repeat < 5; ++repeat) keyboard.press(f8);
    EXPECT_EQ(takeHeard(), Heard{"press"});
    keyboard.release(f8);
    EXPECT_EQ(takeHeard(), Heard{"release"});
    EXPECT_TRUE(keyboard.passed.empty());
    EXPECT_EQ(hotkey.inputGeneration(), 0u);
    keyboard.press(f8);
    hotkey.setMode(DictationMode::toggle);
    EXPECT_EQ(takeHeard(), Heard{}) << "queued before a reset";
}

TEST_F(GlobalHotkeyTest, TheShortcutsKeyWithOtherModifiersIsOrdinaryInput) {
    hotkey.setShortcut(Hotkey::f8);
    keyboard.press(keyCode::leftControl);
    keyboard.tap(f8);
    keyboard.release(keyCode::leftControl);
    EXPECT_EQ(takeHeard(), Heard{});
    EXPECT_TRUE(keyboard.swallowed.empty());
    EXPECT_EQ(hotkey.inputGeneration(), 1u);

    // Let go of a modifier while the shortcut is held: the release is still the shortcut's.
    hotkey.setShortcut(Hotkey::commandShiftSpace);
    keyboard.press(keyCode::leftCommand);
    keyboard.press(keyCode::leftShift);
    keyboard.press(keyCode::space);
    keyboard.release(keyCode::leftShift);
    keyboard.release(keyCode::space);
    EXPECT_EQ(takeHeard(), (Heard{"press", "release"}));
}

TEST_F(GlobalHotkeyTest, AHeldModifierStartsAfterTheDelayAndItsReleaseFinishes) {
    keyboard.press(rightOption);
    scheduler.advance(299ms);
    EXPECT_EQ(takeHeard(), Heard{});
    scheduler.advance(1ms);
    EXPECT_EQ(takeHeard(), Heard{"press"});
    keyboard.release(rightOption);
    EXPECT_EQ(takeHeard(), Heard{"release"});

    keyboard.press(rightOption);
    scheduler.advance(200ms);
    keyboard.release(rightOption);
    scheduler.advance(1s);
    EXPECT_EQ(takeHeard(), Heard{}) << "a short press";
    EXPECT_EQ(hotkey.inputGeneration(), 0u);
}

TEST_F(GlobalHotkeyTest, ACombinationWithTheModifierNeverStartsAndCancelsWhatItStarted) {
    const std::pair<const char*, std::function<void()>> chords[] = {
        {"key", [&] { keyboard.tap(keyA); }},
        {"click", [&] { keyboard.click(); }},
        {"scroll", [&] { keyboard.scroll(); }},
        {"other modifier", [&] { keyboard.tap(keyCode::leftShift); }},
    };
    for (const auto& [name, chord] : chords) {
        keyboard.press(rightOption);
        chord();
        scheduler.advance(1s);
        keyboard.release(rightOption);
        EXPECT_EQ(takeHeard(), Heard{}) << name << " before the delay";

        keyboard.press(rightOption);
        scheduler.advance(300ms);
        chord();
        keyboard.release(rightOption);
        EXPECT_EQ(takeHeard(), (Heard{"press", "cancel"})) << name << " while dictating";
    }
    keyboard.pressButton();
    keyboard.press(rightOption);
    scheduler.advance(1s);
    EXPECT_EQ(takeHeard(), Heard{}) << "with a mouse button held";
}

TEST_F(GlobalHotkeyTest, InToggleModeATapOfTheModifierIsOnePress) {
    hotkey.setMode(DictationMode::toggle);
    keyboard.tap(rightOption);
    EXPECT_EQ(takeHeard(), Heard{"press"});
    keyboard.press(rightOption);
    keyboard.tap(keyA);
    keyboard.release(rightOption);
    EXPECT_EQ(takeHeard(), Heard{});
}

TEST_F(GlobalHotkeyTest, EscapeCancelsOnceAndOnlyWhileEnabledAndBare) {
    keyboard.tap(escape);
    EXPECT_EQ(keyboard.passed.size(), 2u);

    hotkey.setCancelEnabled(true);
    keyboard.press(escape);
    keyboard.press(escape);
    hotkey.setCancelEnabled(false);  // as the controller does when it has cancelled
    keyboard.release(escape);
    EXPECT_EQ(takeHeard(), Heard{"cancel"});
    EXPECT_EQ(keyboard.swallowed.size(), 3u);

    hotkey.setCancelEnabled(true);
    keyboard.press(keyCode::leftShift);
    keyboard.tap(escape);
    EXPECT_EQ(takeHeard(), Heard{});
}

TEST_F(GlobalHotkeyTest, WhileSuspendedNothingIsRecognisedButInputIsTracked) {
    hotkey.setShortcut(Hotkey::f8);
    hotkey.setCancelEnabled(true);
    hotkey.setSuspended(true);
    keyboard.tap(f8);
    keyboard.tap(escape);
    keyboard.click();
    EXPECT_EQ(takeHeard(), Heard{});
    EXPECT_TRUE(keyboard.swallowed.empty());
    EXPECT_EQ(hotkey.inputGeneration(), 1u) << "the click counts";
}

TEST_F(GlobalHotkeyTest, OwnPasteEventsChangeNothing) {
    hotkey.setCancelEnabled(true);
    keyboard.press(rightOption);
    for (auto type : {TapEventType::flagsChanged, TapEventType::keyDown, TapEventType::keyUp})
        keyboard.deliver({type, keyCode::v, 0, modifierFlag::command, quorviPasteEventMarker});
    scheduler.advance(300ms);
    EXPECT_EQ(takeHeard(), Heard{"press"}) << "the gesture was not disturbed";
    EXPECT_EQ(hotkey.inputGeneration(), 0u);
}

TEST_F(GlobalHotkeyTest, ADisabledTapIsRevivedAndTheInterruptionReported) {
    keyboard.press(rightOption);
    scheduler.advance(300ms);
    EXPECT_EQ(takeHeard(), Heard{"press"});
    keyboard.disable();
    EXPECT_EQ(takeHeard(), Heard{"interruption"});
    EXPECT_TRUE(hotkey.isRunning());

    keyboard.invalidate();
    EXPECT_FALSE(hotkey.isRunning());
    EXPECT_TRUE(hotkey.start());
    EXPECT_EQ(keyboard.installs, 2);
}

TEST_F(GlobalHotkeyTest, AReleaseThatWasMissedIsNoticedByTheHealthCheck) {
    hotkey.setShortcut(Hotkey::f8);
    keyboard.press(f8);
    EXPECT_EQ(takeHeard(), Heard{"press"});
    keyboard.setEnabled(false);
    keyboard.release(f8);
    keyboard.setEnabled(true);
    EXPECT_TRUE(hotkey.start());
    scheduler.advance(100ms);
    EXPECT_EQ(takeHeard(), Heard{"interruption"});
    keyboard.press(f8);
    EXPECT_EQ(takeHeard(), Heard{"press"});
}

TEST_F(GlobalHotkeyTest, AReleaseThatIsStillOnItsWayIsNotMissed) {
    hotkey.setShortcut(Hotkey::f8);
    keyboard.press(f8);
    keyboard.setEnabled(false);
    keyboard.release(f8);  // known to the hook, not delivered yet
    keyboard.setEnabled(true);
    EXPECT_TRUE(hotkey.start());
    keyboard.deliver({TapEventType::keyUp, f8});
    scheduler.advance(1s);
    EXPECT_EQ(takeHeard(), (Heard{"press", "release"}));
}

}  // namespace
}  // namespace quorvi::test
