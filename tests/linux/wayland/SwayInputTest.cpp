#include <gtest/gtest.h>

#include <cstdlib>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/wayland/clipboard/DataControlPasteboard.h"
#include "Quorvi/platform/linux/wayland/input/VirtualKeyboardPoster.h"
#include "Quorvi/platform/linux/wayland/probe/WaylandProbe.h"
#include "Quorvi/platform/linux/wayland/sway/SwayConfig.h"
#include "Quorvi/platform/linux/wayland/sway/SwayKeyEventTap.h"
#include "Quorvi/platform/linux/wayland/sway/SwayWorkspace.h"
#include "tests/support/desktop/EditorUser.h"
#include "tests/support/desktop/TapRecorder.h"

namespace quorvi::test {
namespace {

using Type = TapEventType;
constexpr auto rightOption = modifierFlag::option | modifierFlag::rightOption;

class SwayInputTest : public testing::Test, protected EditorUser {
protected:
    void install(std::vector<SwallowedKey> keys, std::optional<KeyCode> lone = {}) {
        tap.setSwallowed(std::move(keys));
        tap.setQuietModifier(lone);
        ASSERT_TRUE(tap.install([this](const TapEvent& event) {
            events.push_back(event);
            return TapVerdict::pass;
        }));
        ASSERT_TRUE(until([&] { return tap.isValid(); }));
    }
    bool until(const std::function<bool()>& condition) { return test::until(scheduler, condition); }
    // Whether exactly these come, in this order.
    void expectEvents(const std::vector<TapEvent>& expected) {
        EXPECT_TRUE(until([&] { return events.size() >= expected.size(); }));
        EXPECT_EQ(events, expected);
        events.clear();
    }

    LoopScheduler scheduler;
    WaylandInput input;
    SwayWorkspace workspace{scheduler};
    SwayKeyEventTap tap{scheduler, input};
    VirtualKeyboardPoster poster{input, [this] { return workspace.frontmostClass(); }};
    std::vector<TapEvent> events;
};

TEST_F(SwayInputTest, TheProbeFindsWhatSwayOffers) {
    EXPECT_EQ(probeWayland(), (DesktopCapabilities{true, true, true, true, true, true}));
    EXPECT_TRUE(probeWayland().isNative());
}

TEST_F(SwayInputTest, ALoneModifierAndACombinationGoDownAndUpAndOtherKeysPass) {
    const auto field = openMousepad();
    ASSERT_TRUE(field);
    const KeyCode f8 = 100;
    install({{keyCode::escape, 0}, {f8, modifierFlag::control | modifierFlag::shift}},
            keyCode::rightOption);
    user.press(key::rightAlt);
    expectEvents({{Type::flagsChanged, keyCode::rightOption, 0, rightOption}});
    EXPECT_TRUE(tap.keyIsDown(keyCode::rightOption));
    user.release(key::rightAlt);
    expectEvents({{Type::flagsChanged, keyCode::rightOption}});
    // Another key meanwhile is reported, and arrives in the field.
    user.press(key::rightAlt);
    ASSERT_TRUE(until([&] { return events.size() == 1; }));
    user.tap(key::capsLock);
    user.release(key::rightAlt);
    ASSERT_TRUE(until([&] { return events.size() == 4; }));
    EXPECT_EQ(events[1].keyCode, 57);  // Caps Lock
    events.clear();

    const std::uint64_t held = modifierFlag::control | modifierFlag::shift;
    for (const auto one : {key::leftControl, key::leftShift, key::f8}) user.press(one);
    ASSERT_TRUE(until([&] { return tap.keyIsDown(f8); }));
    for (const auto one : {key::f8, key::leftShift, key::leftControl}) user.release(one);
    // The keyboard may still be held from before, and then shows the modifiers' sides as well.
    ASSERT_TRUE(until([&] { return std::ranges::count(events, f8, &TapEvent::keyCode) == 2; }));
    const auto press = std::ranges::find(events, f8, &TapEvent::keyCode);
    EXPECT_EQ(press->flags & Hotkey::standardModifierMask, held);
    EXPECT_TRUE(eventually([&] { return !tap.keyIsDown(f8); }));
    events.clear();
    user.tap(key::escape);
    EXPECT_TRUE(until([&] {
        return std::ranges::count(events, TapEvent{Type::keyDown, keyCode::escape}) == 1 &&
               std::ranges::count(events, TapEvent{Type::keyUp, keyCode::escape}) == 1;
    }));
    user.type("abc");
    EXPECT_TRUE(until([&] { return fieldText() == "abc"; })) << fieldText();
}

TEST_F(SwayInputTest, WhatIsTypedWhileAKeyIsHeldAndAtItsReleaseIsNotLost) {
    ASSERT_TRUE(openMousepad());
    install({{100, 0}});
    constexpr int rounds = 20;
    for (int round = 0; round < rounds; ++round) {
        user.press(key::f8);
        user.type("ab");
        user.release(key::f8);
        user.type("cd");
    }
    // Faster than anybody types, so two that change hands at that moment may swap.
    EXPECT_TRUE(until([&] {
        const auto typed = fieldText();
        return std::ranges::all_of(std::string_view("abcd"), [&](char letter) {
            return std::ranges::count(typed, letter) == rounds;
        });
    })) << fieldText();
}

TEST_F(SwayInputTest, AReloadBindsAgain) {
    install({{100, 0}});
    shell("swaymsg reload");
    EXPECT_TRUE(until([&] {
        user.tap(key::f8);
        return events.size() >= 2;
    }));
}

TEST_F(SwayInputTest, ARemovedHookComesBackAndRepeatedPressesAreOne) {
    install({{100, 0}});
    tap.remove();
    EXPECT_FALSE(tap.isValid());
    install({{100, 0}});
    user.press(key::f8);
    ASSERT_TRUE(until([&] { return tap.keyIsDown(100); }));
    for (int repeat = 0; repeat < 35; ++repeat) user.press(key::f8);
    user.release(key::f8);
    expectEvents({{Type::keyDown, 100}, {Type::keyUp, 100}});
}

// A key of a macro, or one that is touched while the machine is busy, is up before this program has
// the keyboard.
TEST_F(SwayInputTest, AReleaseThatWasMissedIsToldAtTheNextPress) {
    install({{100, 0}}, keyCode::rightOption);
    for (int presses = 1; presses <= 20; ++presses) {
        user.tap(key::f8);
        EXPECT_TRUE(until(
            [&] { return std::ranges::count(events, TapEvent{Type::keyDown, 100}) == presses; }));
        if (presses % 4 == 0) scheduler.runFor(std::chrono::milliseconds(60));
    }
    user.press(key::f8);
    EXPECT_TRUE(until([&] { return events.size() == 41; }));
    scheduler.runFor(std::chrono::milliseconds(60));
    user.release(key::f8);
    EXPECT_TRUE(until([&] { return events.size() == 42; }));
    EXPECT_EQ(std::ranges::count(events, TapEvent{Type::keyUp, 100}), 21);
    EXPECT_FALSE(tap.keyIsDown(100));
}

TEST_F(SwayInputTest, TheFocusedProgramIsKnownAndPastesWhateverIsHeld) {
    ASSERT_TRUE(until([&] { return !workspace.frontmostApplication(); }));
    ASSERT_TRUE(openMousepad());
    EXPECT_TRUE(until([&] {
        const auto frontmost = workspace.frontmostApplication();
        return frontmost && frontmost->pid == editor.pid() && frontmost->name == "Mousepad" &&
               frontmost->window != 0;
    }));
    DataControlPasteboard pasteboard(scheduler);
    const Running<std::optional<std::int64_t>> writing(
        pasteboard.writeText("pasted", TranscriptVisibility::everywhere));
    ASSERT_TRUE(until([&] { return writing.ended(); }));
    user.press(key::leftShift);
    const TapEvent commandV{Type::keyDown, keyCode::v, 0, modifierFlag::command};
    ASSERT_TRUE(poster.isAvailable());
    poster.post({&commandV, 1}, editor.pid());
    EXPECT_TRUE(until([&] { return fieldText() == "pasted"; })) << fieldText();
    user.release(key::leftShift);
    editor.kill();
    EXPECT_TRUE(until([&] { return !workspace.frontmostApplication(); }));
}

TEST(SwayConfigTest, FindsTheUsersBindings) {
    const SwayConfig config(
        "set $mod Mod4\n# bindsym F8 nop\nbindsym --to-code $mod+Shift+Space exec menu\n"
        "mode \"resize\" {\n bindsym Escape mode \"default\"\n}\nbindcode 108 nop\n"
        "bindsym --release {\n F9 nop\n}\ninclude ~/more/*\n");
    struct Row {
        SwallowedKey key;
        bool isBound;
    };
    for (const auto& [key, isBound] :
         {Row{{keyCode::space, modifierFlag::command | modifierFlag::shift}, true},
          Row{{keyCode::space, modifierFlag::command}, false}, Row{{100, 0}, false},
          Row{{keyCode::escape, 0}, false}, Row{{keyCode::rightOption, 0}, true},
          Row{{101, 0}, true}})
        EXPECT_EQ(config.binds(key), isBound) << key.keyCode;
    EXPECT_EQ(config.includes(), std::vector<std::string>{"~/more/*"});
}

}  // namespace
}  // namespace quorvi::test
