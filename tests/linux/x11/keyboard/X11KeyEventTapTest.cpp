#include "Quorvi/platform/linux/x11/keyboard/X11KeyEventTap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "Quorvi/platform/linux/x11/keyboard/X11InputSupport.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/KeyWindow.h"
#include "tests/support/desktop/TapRecorder.h"

namespace quorvi::test {
namespace {

using Type = TapEventType;

constexpr KeyCode codeA = 0, codeD = 2, codeF8 = 100, codeX = 7;

constexpr std::uint64_t shift = 0x20002, control = 0x42000, command = 0x100008, option = 0x80040;
constexpr std::uint64_t capsLock = 0x10000;

TapEvent modifier(KeyCode code, std::uint64_t flags = 0) {
    return {.type = Type::flagsChanged, .keyCode = code, .flags = flags};
}
std::vector<TapEvent> tapOf(KeyCode code, std::uint64_t flags) {
    return {{.type = Type::keyDown, .keyCode = code, .flags = flags},
            {.type = Type::keyUp, .keyCode = code, .flags = flags}};
}
std::vector<TapEvent> clickOf(Type down, Type up, std::int64_t button) {
    return {{.type = down, .button = button}, {.type = up, .button = button}};
}

class X11KeyEventTapTest : public testing::Test {
protected:
    void SetUp() override {
        useLayout("-option '' us");
        ASSERT_TRUE(window.show());
        ASSERT_TRUE(recorder.install());
    }
    void useLayout(const std::string& arguments) {
        ASSERT_EQ(std::system(("setxkbmap " + arguments).c_str()), 0);
    }
    // Declares the keys and waits until the grabs are in force.
    void swallow(std::vector<SwallowedKey> keys) {
        recorder.tap.setSwallowed(std::move(keys));
        settle();
    }
    void settle() {
        recorder.settle();
        window.forget();
    }
    // Moves on to a key that nobody swallows, when everything before it has been reported.
    bool finishWith(std::uint8_t keycode, KeyCode code) {
        user.tap(keycode);
        return recorder.waitForType(Type::keyUp, code) && window.waitForKey(-keycode);
    }

    KeyWindow window;
    TestUser user;
    TapRecorder recorder;
};

TEST_F(X11KeyEventTapTest, ReportsEveryKindOfEventWithTheFlagsAfterIt) {
    std::vector<TapEvent> expected;
    const auto expect = [&](const std::vector<TapEvent>& events) {
        expected.insert(expected.end(), events.begin(), events.end());
    };
    user.press(key::leftShift);
    user.tap(key::a);
    user.press(key::rightControl);
    user.release(key::leftShift);
    user.release(key::rightControl);
    expect({modifier(56, shift)});
    expect(tapOf(codeA, shift));
    expect({modifier(62, shift | control), modifier(56, control), modifier(62)});
    user.chord({key::leftSuper}, key::x);
    expect({modifier(55, command)});
    expect(tapOf(codeX, command));
    expect({modifier(55)});
    user.type({key::capsLock, key::a, key::capsLock});
    expect({modifier(57, capsLock), modifier(57, capsLock)});
    expect(tapOf(codeA, capsLock));
    expect({modifier(57, capsLock), modifier(57)});
    for (const std::uint8_t button : {1, 3, 2, 9, 4, 7}) user.click(button);
    expect(clickOf(Type::leftMouseDown, Type::leftMouseUp, 0));
    expect(clickOf(Type::rightMouseDown, Type::rightMouseUp, 1));
    expect(clickOf(Type::otherMouseDown, Type::otherMouseUp, 2));
    expect(clickOf(Type::otherMouseDown, Type::otherMouseUp, 4));
    expect({{.type = Type::scrollWheel}, {.type = Type::scrollWheel}});
    ASSERT_TRUE(recorder.waitForEvents(expected.size()));
    EXPECT_EQ(recorder.events, expected);
}

TEST_F(X11KeyEventTapTest, UnderEveryLayoutPhysicalKeysAreReportedAndReachTheApplication) {
    const std::vector<KeyCode> expected{61, codeA, 1, codeX, 9, 24, 41, 10, 83, 123, 50};
    for (const char* layout :
         {"us", "de", "'us(altgr-intl)'", "gr", "'de(neo)'", "'us(dvorak)'", "ru"}) {
        SCOPED_TRACE(layout);
        useLayout(layout);
        settle();
        const TestUser::Keys keys = {key::rightAlt, key::a,    key::s, key::x, key::v, 21, 47, 94,
                                     key::keypad1,  key::left, 49};
        user.type(keys);
        ASSERT_TRUE(recorder.waitForEvents(22));
        EXPECT_EQ(recorder.events[0], modifier(61, option));
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_EQ(recorder.events[2 * i].keyCode, expected[i]) << "key " << i;
        EXPECT_TRUE(window.waitForKeys(taps(keys)));
        recorder.events.clear();
    }
}

TEST_F(X11KeyEventTapTest, AQuietModifierIsNotPressedAloneForTheApplicationAndStillMakesChords) {
    recorder.tap.setQuietModifier(61);
    settle();
    // No person lets go before the silent key has been tapped.
    const auto press = [&](int modifier) {
        const auto seen = window.keys().size();
        user.press(modifier);
        return window.waitFor([&] { return window.keys().size() == seen + 3; });
    };
    ASSERT_TRUE(press(key::rightAlt));
    user.release(key::rightAlt);
    const int silent = window.keys()[1];
    EXPECT_GT(silent, 200) << "no key of a keyboard";
    ASSERT_TRUE(window.waitForKeys({108, silent, -silent, -108}));
    window.forget();
    ASSERT_TRUE(press(key::rightAlt));
    user.tap(key::a);
    user.release(key::rightAlt);
    user.chord({key::leftShift}, key::rightAlt);
    user.tap(key::leftAlt);
    EXPECT_TRUE(
        window.waitForKeys({108, silent, -silent, 38, -38, -108, 50, 108, -108, -50, 64, -64}));
    ASSERT_TRUE(recorder.waitForEvents(12));
    EXPECT_EQ(recorder.events.size(), 12U) << "the silent key is reported to nobody";
    EXPECT_FALSE(x11RightAltIsAltGr());
    useLayout("us,de");
    EXPECT_TRUE(x11RightAltIsAltGr());
    useLayout("'us(altgr-intl)'");
    EXPECT_TRUE(x11RightAltIsAltGr());
    settle();
    user.tap(key::rightAlt);
    EXPECT_TRUE(window.waitForKeys({108, -108})) << "AltGr opens no menu";
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
    ASSERT_TRUE(finishWith(key::a, codeA));
    EXPECT_EQ(recorder.count(Type::keyDown, codeX), 1);
    EXPECT_FALSE(window.hasSeen(key::x));
}

TEST_F(X11KeyEventTapTest, SwallowsACombinationWithItsRepeatsWhateverTheLocks) {
    swallow({{codeD, modifierFlag::control | modifierFlag::option}});
    user.type({key::capsLock, key::numLock});
    window.forget();
    user.press(key::leftControl);
    user.press(key::rightAlt);
    user.press(key::d);
    // The press, and at least three repeats.
    ASSERT_TRUE(recorder.waitUntil([&] { return recorder.count(Type::keyDown, codeD) >= 4; }));
    EXPECT_EQ(recorder.count(Type::keyUp, codeD), 0);
    user.release(key::d);
    user.release(key::rightAlt);
    user.release(key::leftControl);
    ASSERT_TRUE(finishWith(key::x, codeX));
    EXPECT_EQ(recorder.count(Type::keyUp, codeD), 1);
    EXPECT_FALSE(window.hasSeen(key::d));
    user.type({key::capsLock, key::numLock});
}

TEST_F(X11KeyEventTapTest, OnlyDeclaredKeysAreKeptBackWhileASwallowedKeyIsHeld) {
    // A key that another program has grabbed can't be swallowed, and hinders nothing.
    X11Connection other;
    xcb_grab_key(other.get(), 0, window.window(), XCB_MOD_MASK_ANY, key::d, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    other.synchronise();
    swallow({{codeF8, 0}, {codeD, 0}, {keyCode::escape, 0}});
    user.press(key::f8);
    user.tap(key::escape);
    user.release(key::f8);
    user.type({key::d, key::v});
    EXPECT_TRUE(window.waitForKeys(taps({key::v})));

    user.press(key::f8);
    user.type({key::a, key::s});
    user.release(key::f8);
    ASSERT_TRUE(finishWith(key::x, codeX));
    auto pressed = window.keys();
    std::erase_if(pressed, [](int key) { return key < 0; });
    EXPECT_EQ(pressed, (std::vector<int>{key::v, key::a, key::s, key::x}));
    EXPECT_EQ(recorder.count(Type::keyDown, codeF8), 2);
    EXPECT_EQ(recorder.count(Type::keyUp, codeF8), 2);
    EXPECT_EQ(recorder.count(Type::keyUp, codeD), 1);
    EXPECT_TRUE(recorder.tap.isValid());
}

TEST_F(X11KeyEventTapTest, AKeyIsSwallowedOnlyWhileDeclaredAndWithItsModifiersOnly) {
    user.press(key::escape);
    ASSERT_TRUE(window.waitForKey(key::escape));
    recorder.tap.setSwallowed({{keyCode::escape, 0}});
    // This press stays the window's, with its repeats: each is a release and a press to it.
    ASSERT_TRUE(window.waitFor([&] { return window.keys().size() >= 6; }));
    user.release(key::escape);
    ASSERT_TRUE(recorder.waitForType(Type::keyUp, keyCode::escape));
    ASSERT_TRUE(window.waitFor([&] { return window.keys().back() == -key::escape; }));
    EXPECT_EQ(recorder.count(Type::keyDown, keyCode::escape), 1);

    window.forget();
    user.tap(key::escape);
    user.chord({key::leftShift}, key::escape);
    ASSERT_TRUE(window.waitForKeys({key::leftShift, key::escape, -key::escape, -key::leftShift}));
    swallow({{keyCode::escape, modifierFlag::control}});
    user.tap(key::escape);
    EXPECT_TRUE(window.waitForKeys(taps({key::escape})));
    EXPECT_TRUE(
        recorder.waitUntil([&] { return recorder.count(Type::keyUp, keyCode::escape) == 4; }));
}

TEST_F(X11KeyEventTapTest, TheGrabFollowsTheFocusToOtherWindowsAndBack) {
    swallow({{codeF8, 0}});
    for (int round = 0; round < 3; ++round) {
        KeyWindow other("Other");
        ASSERT_TRUE(other.show());
        settle();
        other.forget();
        user.type({key::f8, key::a});
        EXPECT_TRUE(other.waitForKeys(taps({key::a})));
    }  // the window is destroyed with the grab on it
    ASSERT_TRUE(window.focus());
    settle();
    user.type({key::f8, key::x});
    EXPECT_TRUE(window.waitForKeys(taps({key::x})));
    EXPECT_TRUE(recorder.waitUntil([&] { return recorder.count(Type::keyUp, codeF8) == 4; }));
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
    EXPECT_TRUE(window.waitForKey(key::f8));
    user.press(key::x);  // with this one the hook has seen all that came before
    ASSERT_TRUE(recorder.waitUntil([&] { return recorder.tap.keyIsDown(codeX); }));
    recorder.tap.setEnabled(true);
    settle();
    EXPECT_EQ(recorder.events, std::vector<TapEvent>{});
    user.release(key::x);
    user.release(key::a);
    user.tap(key::f8);
    ASSERT_TRUE(finishWith(key::d, codeD));
    EXPECT_FALSE(recorder.tap.keyIsDown(codeA));
    EXPECT_EQ(recorder.count(Type::keyDown, codeF8), 1);
    EXPECT_FALSE(window.hasSeen(key::f8));
}

TEST_F(X11KeyEventTapTest, MayBeRemovedByItsHandlerAndInstalledWhileKeysAreHeld) {
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
    EXPECT_FALSE(recorder.tap.isValid());

    user.press(key::rightAlt);
    ASSERT_TRUE(recorder.install());
    EXPECT_TRUE(recorder.tap.keyIsDown(61));
    user.pressButton(3);
    ASSERT_TRUE(recorder.waitForEvents(1));
    EXPECT_EQ(recorder.events[0].flags, option);
    EXPECT_TRUE(recorder.tap.buttonIsDown(1));
    user.releaseButton(3);
    user.release(key::rightAlt);
    ASSERT_TRUE(recorder.waitForEvents(3));
    EXPECT_FALSE(recorder.tap.keyIsDown(61) || recorder.tap.buttonIsDown(1));
}

TEST_F(X11KeyEventTapTest, KeepsOrderAndLosesNothingWhileTheMainThreadIsBusy) {
    swallow({{codeF8, 0}});
    for (int i = 0; i < 300; ++i) {
        user.type({key::a, key::f8});
        user.press(key::f8);  // before the hook has answered the release
        user.tap(key::a);     // ends the grab, so the window gets the release of F8
        user.release(key::f8);
    }
    // Nothing has run on the main thread so far; the application has its keys already.
    EXPECT_TRUE(window.waitFor([&] { return window.keys().size() == 1500; }));
    ASSERT_TRUE(recorder.waitForEvents(2400));
    for (std::size_t i = 0; i < 2400; i += 8) {
        std::vector<KeyCode> codes;
        for (std::size_t k = i; k < i + 8; ++k) codes.push_back(recorder.events[k].keyCode);
        ASSERT_EQ(codes, (std::vector{codeA, codeA, codeF8, codeF8, codeF8, codeA, codeA, codeF8}));
    }
}

TEST(X11KeyEventTap, SurvivesTheServersEndAndIsRevivedOnAnother) {
    const std::string original = std::getenv("DISPLAY");
    {
        TapRecorder recorder;
        NestedServer first;
        setenv("DISPLAY", first.display().c_str(), 1);
        ASSERT_TRUE(recorder.install());
        first.kill();
        ASSERT_TRUE(recorder.waitForEvents(1));
        EXPECT_EQ(recorder.events[0].type, Type::tapDisabledByUserInput);
        EXPECT_FALSE(recorder.tap.isValid());
        EXPECT_FALSE(recorder.tap.isEnabled());
        EXPECT_FALSE(recorder.install());

        NestedServer second;
        setenv("DISPLAY", second.display().c_str(), 1);
        ASSERT_TRUE(recorder.install());
        EXPECT_TRUE(recorder.tap.isEnabled());
        TestUser user(second.display());
        user.tap(key::a);
        EXPECT_TRUE(recorder.waitForType(Type::keyUp, codeA));
    }
    setenv("DISPLAY", original.c_str(), 1);
}

}  // namespace
}  // namespace quorvi::test
