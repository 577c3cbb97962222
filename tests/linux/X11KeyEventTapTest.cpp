#include "Quorvi/platform/linux/X11KeyEventTap.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/KeyWindow.h"
#include "tests/support/TapRecorder.h"
#include "tests/support/TestUser.h"

namespace quorvi::test {
namespace {

using Type = TapEventType;

constexpr KeyCode codeA = 0, codeD = 2, codeF8 = 100, codeX = 7;

constexpr std::uint64_t shift = 0x20002, control = 0x42000, command = 0x100008, option = 0x80040;

TapEvent modifier(KeyCode code, std::uint64_t flags = 0) {
    return {.type = Type::flagsChanged, .keyCode = code, .flags = flags};
}
TapEvent down(KeyCode code, std::uint64_t flags = 0) {
    return {.type = Type::keyDown, .keyCode = code, .flags = flags};
}
TapEvent up(KeyCode code, std::uint64_t flags = 0) {
    return {.type = Type::keyUp, .keyCode = code, .flags = flags};
}
TapEvent mouse(Type type, std::int64_t button = 0) {
    return {.type = type, .button = button};
}

void useLayout(const std::string& arguments) {
    ASSERT_EQ(std::system(("setxkbmap " + arguments).c_str()), 0);
}

std::vector<KeyWindow::Key> taps(TestUser::Keys keycodes) {
    std::vector<KeyWindow::Key> keys;
    for (const auto keycode : keycodes)
        for (const bool pressed : {true, false}) keys.push_back({keycode, pressed});
    return keys;
}

class X11KeyEventTapTest : public testing::Test {
protected:
    void SetUp() override {
        useLayout("-option '' us");
        ASSERT_TRUE(window.show());
        ASSERT_TRUE(recorder.install());
    }
    void TearDown() override {
        // Whatever a failed test has left pressed.
        for (const auto keycode : {key::leftControl, key::leftAlt, key::f8, key::escape, key::a})
            user.release(keycode);
    }

    // Declares the keys and waits until the grabs are in force: commands are carried out in order,
    // so an own event that has come back was posted after them.
    void swallow(std::vector<SwallowedKey> keys) {
        recorder.tap.setSwallowed(std::move(keys));
        settle();
    }
    void settle() {
        recorder.settle();
        window.forget();
    }

    KeyWindow window;
    TestUser user;
    TapRecorder recorder;
};

TEST_F(X11KeyEventTapTest, ReportsEveryKindOfEventWithTheFlagsAfterIt) {
    user.press(key::leftShift);
    user.press(key::a);
    user.release(key::a);
    user.press(key::rightControl);
    user.release(key::leftShift);
    user.release(key::rightControl);
    user.chord({key::leftSuper}, key::x);
    for (const std::uint8_t button : {1, 3, 2, 9, 4, 7}) user.click(button);
    ASSERT_TRUE(recorder.waitForEvents(20));
    const std::vector<TapEvent> expected{modifier(56, shift),
                                         down(codeA, shift),
                                         up(codeA, shift),
                                         modifier(62, shift | control),
                                         modifier(56, control),
                                         modifier(62),
                                         modifier(55, command),
                                         down(codeX, command),
                                         up(codeX, command),
                                         modifier(55),
                                         mouse(Type::leftMouseDown, 0),
                                         mouse(Type::leftMouseUp, 0),
                                         mouse(Type::rightMouseDown, 1),
                                         mouse(Type::rightMouseUp, 1),
                                         mouse(Type::otherMouseDown, 2),
                                         mouse(Type::otherMouseUp, 2),
                                         mouse(Type::otherMouseDown, 4),
                                         mouse(Type::otherMouseUp, 4),
                                         mouse(Type::scrollWheel),
                                         mouse(Type::scrollWheel)};
    EXPECT_EQ(recorder.events, expected);
}

TEST_F(X11KeyEventTapTest, ALoneRightAltIsSeenOnItsSideAndStillReachesTheApplication) {
    for (const char* layout : {"us", "de", "'us(altgr-intl)'"}) {
        useLayout(layout);
        settle();
        user.press(key::rightAlt);
        ASSERT_TRUE(recorder.waitForEvents(1)) << layout;
        EXPECT_TRUE(recorder.tap.keyIsDown(61)) << layout;
        EXPECT_FALSE(recorder.tap.keyIsDown(58)) << layout;
        user.release(key::rightAlt);
        ASSERT_TRUE(recorder.waitForEvents(2)) << layout;
        EXPECT_FALSE(recorder.tap.keyIsDown(61)) << layout;
        EXPECT_EQ(recorder.events, (std::vector{modifier(61, option), modifier(61)})) << layout;
        EXPECT_TRUE(window.waitForKeys(taps({key::rightAlt}))) << layout;
        recorder.events.clear();
    }
}

TEST_F(X11KeyEventTapTest, CapsLockShowsInTheFlagsOfItsOwnEventsAndOfLaterOnes) {
    user.type({key::capsLock, key::a, key::capsLock});
    ASSERT_TRUE(recorder.waitForEvents(6));
    EXPECT_EQ(recorder.events[0].keyCode, 57);
    EXPECT_EQ(recorder.events[0].type, Type::flagsChanged);
    EXPECT_EQ(recorder.events[2], down(codeA, 0x10000));
    EXPECT_EQ(recorder.events[5].flags, 0u);
}

TEST_F(X11KeyEventTapTest, ReportsTheSamePhysicalKeysUnderEveryLayout) {
    const std::vector<KeyCode> expected{codeA, 1, codeX, 9, 24, 41, 10, 83, 123, 50};
    for (const char* layout : {"us", "gr", "'de(neo)'", "'us(dvorak)'", "ru"}) {
        useLayout(layout);
        settle();
        user.type({key::a, key::s, key::x, key::v, 21, 47, 94, key::keypad1, key::left, 49});
        ASSERT_TRUE(recorder.waitForEvents(20)) << layout;
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_EQ(recorder.events[2 * i].keyCode, expected[i]) << layout << ", key " << i;
        recorder.events.clear();
    }
}

TEST_F(X11KeyEventTapTest, KeysMovedByTheUsersOptionsCountAsWhatTheyHaveBecome) {
    useLayout("us -option ctrl:nocaps -option altwin:swap_alt_win");
    recorder.scheduler.runFor(std::chrono::milliseconds(300));
    settle();
    user.press(key::capsLock);
    user.press(key::leftAlt);
    ASSERT_TRUE(recorder.waitForEvents(2));
    EXPECT_EQ(recorder.events[0].flags, 0x40001u);
    EXPECT_EQ(recorder.events[1].flags, 0x140009u);
    user.release(key::leftAlt);
    user.release(key::capsLock);
    swallow({{codeX, modifierFlag::command}});
    user.chord({key::leftAlt}, key::x);
    user.tap(key::a);
    ASSERT_TRUE(recorder.waitForType(Type::keyUp, codeA));
    EXPECT_EQ(recorder.count(Type::keyDown, codeX), 1);
    EXPECT_TRUE(window.waitForKey({key::a, false}));
    EXPECT_FALSE(window.hasSeen(key::x));
}

TEST_F(X11KeyEventTapTest, SwallowsACombinationWithItsRepeatsWhateverTheLocks) {
    swallow({{codeD, modifierFlag::control | modifierFlag::option}});
    for (const bool locked : {false, true}) {
        if (locked) {
            user.tap(key::capsLock);
            user.tap(key::numLock);
        }
        window.forget();
        recorder.events.clear();
        user.press(key::leftControl);
        user.press(key::rightAlt);
        user.press(key::d);
        // The press, and at least three repeats.
        ASSERT_TRUE(recorder.waitUntil([&] { return recorder.count(Type::keyDown, codeD) >= 4; }));
        EXPECT_EQ(recorder.count(Type::keyUp, codeD), 0);
        user.release(key::d);
        user.release(key::rightAlt);
        user.release(key::leftControl);
        user.tap(key::x);
        ASSERT_TRUE(recorder.waitForType(Type::keyUp, codeX));
        EXPECT_EQ(recorder.count(Type::keyUp, codeD), 1);
        EXPECT_TRUE(window.waitForKey({key::x, false}));
        EXPECT_FALSE(window.hasSeen(key::d)) << locked;
    }
    user.tap(key::capsLock);
    user.tap(key::numLock);
}

TEST_F(X11KeyEventTapTest, OtherKeysTypedWhileASwallowedKeyIsHeldArrive) {
    swallow({{codeF8, 0}, {keyCode::escape, 0}});
    user.press(key::f8);
    user.type({key::a, key::s});
    user.release(key::f8);
    user.tap(key::x);
    ASSERT_TRUE(recorder.waitForType(Type::keyUp, codeX));
    ASSERT_TRUE(window.waitForKey({key::x, false}));
    std::vector<std::uint8_t> pressed;
    for (const auto& received : window.keys())
        if (received.down) pressed.push_back(received.keycode);
    EXPECT_EQ(pressed, (std::vector<std::uint8_t>{key::a, key::s, key::x}));
    EXPECT_EQ(recorder.count(Type::keyDown, codeF8), 1);
    EXPECT_EQ(recorder.count(Type::keyUp, codeF8), 1);

    // A second declared key, pressed during the hold, is kept from the application, too.
    window.forget();
    user.press(key::f8);
    user.tap(key::escape);
    user.release(key::f8);
    user.tap(key::x);
    EXPECT_TRUE(window.waitForKeys(taps({key::x})));
}

TEST_F(X11KeyEventTapTest, AKeyIsSwallowedOnlyWhileDeclaredAndWithItsModifiersOnly) {
    user.tap(key::escape);
    ASSERT_TRUE(window.waitForKeys(taps({key::escape})));
    swallow({{keyCode::escape, 0}});
    user.tap(key::escape);
    user.chord({key::leftShift}, key::escape);
    ASSERT_TRUE(window.waitForKeys({{key::leftShift, true},
                                    {key::escape, true},
                                    {key::escape, false},
                                    {key::leftShift, false}}));
    swallow({{keyCode::escape, modifierFlag::control}});
    user.tap(key::escape);
    EXPECT_TRUE(window.waitForKeys(taps({key::escape})));
    EXPECT_TRUE(recorder.waitUntil([&] { return recorder.count(Type::keyUp, 53) == 4; }));
}

TEST_F(X11KeyEventTapTest, AKeyHeldSinceBeforeItsDeclarationStaysTheApplications) {
    user.press(key::escape);
    ASSERT_TRUE(window.waitForKey({key::escape, true}));
    recorder.tap.setSwallowed({{keyCode::escape, 0}});
    // Repeats go on reaching the window: each is a release and a press to this window.
    ASSERT_TRUE(window.waitFor([&] { return window.keys().size() >= 6; }));
    user.release(key::escape);
    ASSERT_TRUE(recorder.waitForType(Type::keyUp, 53));
    ASSERT_TRUE(window.waitFor([&] { return !window.keys().back().down; }));
    EXPECT_EQ(recorder.count(Type::keyDown, 53), 1);
    // The next press is a new one.
    window.forget();
    user.tap(key::escape);
    user.tap(key::x);
    EXPECT_TRUE(window.waitForKeys(taps({key::x})));
}

TEST_F(X11KeyEventTapTest, TheGrabFollowsTheFocusToOtherWindowsAndBack) {
    swallow({{codeF8, 0}});
    for (int round = 0; round < 3; ++round) {
        KeyWindow other("Other");
        ASSERT_TRUE(other.show());
        settle();
        other.forget();
        user.tap(key::f8);
        user.tap(key::a);
        EXPECT_TRUE(other.waitForKeys(taps({key::a})));
    }  // the window is destroyed with the grab on it
    ASSERT_TRUE(window.focus());
    settle();
    user.tap(key::f8);
    user.tap(key::x);
    EXPECT_TRUE(window.waitForKeys(taps({key::x})));
    EXPECT_TRUE(recorder.waitUntil([&] { return recorder.count(Type::keyUp, codeF8) == 4; }));
}

TEST_F(X11KeyEventTapTest, AKeyThatAnotherProgramHasGrabbedIsReportedAllTheSame) {
    X11Connection other;
    xcb_grab_key(other.get(), 0, window.window(), XCB_MOD_MASK_ANY, key::f8, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    other.synchronise();
    swallow({{codeF8, 0}, {keyCode::escape, 0}});
    user.tap(key::f8);
    user.tap(key::escape);
    user.tap(key::a);
    ASSERT_TRUE(recorder.waitForType(Type::keyUp, codeA));
    EXPECT_EQ(recorder.count(Type::keyDown, codeF8), 1);
    EXPECT_TRUE(window.waitForKeys(taps({key::a})));
    EXPECT_TRUE(recorder.tap.isValid());
}

TEST_F(X11KeyEventTapTest, WhileDisabledNothingIsReportedOrSwallowedButKeysAreTracked) {
    swallow({{codeF8, 0}});
    recorder.tap.setEnabled(false);
    EXPECT_FALSE(recorder.tap.isEnabled());
    EXPECT_TRUE(recorder.tap.isValid());
    recorder.tap.setSwallowed({{codeF8, 0}, {keyCode::escape, 0}});
    user.press(key::a);
    ASSERT_TRUE(recorder.waitUntil([&] { return recorder.tap.keyIsDown(codeA); }));
    user.tap(key::f8);
    EXPECT_TRUE(window.waitForKey({key::f8, true}));
    user.press(key::x);  // with this one the hook has seen all that came before
    ASSERT_TRUE(recorder.waitUntil([&] { return recorder.tap.keyIsDown(codeX); }));
    recorder.tap.setEnabled(true);
    EXPECT_TRUE(recorder.tap.keyIsDown(codeA));
    settle();
    EXPECT_EQ(recorder.events, std::vector<TapEvent>{});
    user.release(key::x);
    user.release(key::a);
    user.tap(key::f8);
    user.tap(key::d);
    ASSERT_TRUE(recorder.waitForType(Type::keyUp, codeD));
    EXPECT_FALSE(recorder.tap.keyIsDown(codeA));
    EXPECT_EQ(recorder.count(Type::keyDown, codeF8), 1);
    ASSERT_TRUE(window.waitForKey({key::d, false}));
    EXPECT_FALSE(window.hasSeen(key::f8));
}

TEST_F(X11KeyEventTapTest, KeysAndButtonsHeldWhenItIsInstalledAreKnownAtOnce) {
    recorder.tap.remove();
    EXPECT_FALSE(recorder.tap.isValid());
    user.press(key::rightAlt);
    ASSERT_TRUE(recorder.install());
    EXPECT_TRUE(recorder.tap.keyIsDown(61));
    user.pressButton(3);
    ASSERT_TRUE(recorder.waitForEvents(1));
    EXPECT_EQ(recorder.events[0].flags, 0x80040u);
    EXPECT_TRUE(recorder.tap.buttonIsDown(1));
    EXPECT_FALSE(recorder.tap.buttonIsDown(0));
    user.releaseButton(3);
    user.release(key::rightAlt);
    ASSERT_TRUE(recorder.waitForEvents(3));
    EXPECT_FALSE(recorder.tap.keyIsDown(61));
    EXPECT_FALSE(recorder.tap.buttonIsDown(1));
}

TEST_F(X11KeyEventTapTest, AHandlerMayRemoveTheHookThatCallsIt) {
    int calls = 0;
    ASSERT_TRUE(recorder.tap.install([&](const TapEvent&) {
        ++calls;
        recorder.tap.remove();
        return TapVerdict::pass;
    }));
    user.type({key::a, key::s});
    ASSERT_TRUE(recorder.waitUntil([&] { return calls > 0; }));
    recorder.scheduler.runFor(std::chrono::milliseconds(100));
    EXPECT_EQ(calls, 1);
}

TEST_F(X11KeyEventTapTest, KeepsOrderAndLosesNothingWhileTheMainThreadIsBusy) {
    swallow({{codeF8, 0}});
    for (int i = 0; i < 300; ++i) {
        user.tap(key::a);
        user.tap(key::f8);
    }
    // Nothing has run on the main thread so far; the application has its keys already.
    EXPECT_TRUE(window.waitFor([&] { return window.keys().size() == 600; }));
    ASSERT_TRUE(recorder.waitForEvents(1200));
    for (std::size_t i = 0; i < 1200; ++i) {
        EXPECT_EQ(recorder.events[i].type, i % 2 == 0 ? Type::keyDown : Type::keyUp);
        EXPECT_EQ(recorder.events[i].keyCode, i % 4 < 2 ? codeA : codeF8);
    }
}

}  // namespace
}  // namespace quorvi::test
