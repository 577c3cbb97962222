#pragma once

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>

#include "Quorvi/platform/linux/X11Connection.h"

namespace quorvi::test {

// X keycodes of physical keys, as a person's keyboard sends them.
namespace key {
inline constexpr std::uint8_t escape = 9, a = 38, s = 39, d = 40, f = 41, v = 55, x = 53;
inline constexpr std::uint8_t leftControl = 37, rightControl = 105, leftShift = 50, rightShift = 62;
inline constexpr std::uint8_t leftAlt = 64, rightAlt = 108, leftSuper = 133, rightSuper = 134;
inline constexpr std::uint8_t capsLock = 66, numLock = 77, space = 65, enter = 36, f8 = 74;
inline constexpr std::uint8_t arrowLeft = 113, end = 115, keypad1 = 87, menu = 135;
}  // namespace key

// Somebody at the keyboard and mouse: presses physical keys through the test extension, on a
// connection of its own. Everything has reached the server when a call returns.
class TestUser {
public:
    explicit TestUser(const std::string& display = {}) : connection_(display) {}

    void press(std::uint8_t keycode) { fake(XCB_KEY_PRESS, keycode); }
    void release(std::uint8_t keycode) { fake(XCB_KEY_RELEASE, keycode); }
    void tap(std::uint8_t keycode) {
        press(keycode);
        release(keycode);
    }
    void type(std::initializer_list<std::uint8_t> keycodes) {
        for (const auto keycode : keycodes) tap(keycode);
    }

    // Holds the modifiers around a tap of the key.
    void chord(std::initializer_list<std::uint8_t> modifiers, std::uint8_t keycode) {
        for (const auto modifier : modifiers) press(modifier);
        tap(keycode);
        for (const auto modifier : modifiers) release(modifier);
    }

    // Buttons as X counts them: left, middle, right, then four scroll directions.
    void pressButton(std::uint8_t button) { fake(XCB_BUTTON_PRESS, button); }
    void releaseButton(std::uint8_t button) { fake(XCB_BUTTON_RELEASE, button); }
    void click(std::uint8_t button) {
        pressButton(button);
        releaseButton(button);
    }
    void moveTo(std::int16_t x, std::int16_t y) {
        xcb_test_fake_input(connection_.get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME,
                            connection_.root(), x, y, 0);
        connection_.synchronise();
    }

    const X11Connection& connection() const { return connection_; }

private:
    void fake(std::uint8_t type, std::uint8_t detail) {
        xcb_test_fake_input(connection_.get(), type, detail, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        connection_.synchronise();
    }

    X11Connection connection_;
};

}  // namespace quorvi::test
