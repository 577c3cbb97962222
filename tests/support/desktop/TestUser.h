#pragma once

#include <xcb/xcb.h>

#include <bitset>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/platform/linux/x11/X11Connection.h"

namespace quorvi::test {

// X keycodes of physical keys, as a person's keyboard sends them.
namespace key {
inline constexpr std::uint8_t escape = 9, a = 38, k = 45, s = 39, d = 40, l = 46, v = 55, x = 53,
                              tab = 23;
inline constexpr std::uint8_t leftControl = 37, rightControl = 105, leftShift = 50;
inline constexpr std::uint8_t leftAlt = 64, rightAlt = 108, leftSuper = 133;
inline constexpr std::uint8_t capsLock = 66, numLock = 77, space = 65, enter = 36, f6 = 72, f8 = 74,
                              f9 = 75;
inline constexpr std::uint8_t home = 110, end = 115, up = 111, down = 116, left = 113, right = 114;
inline constexpr std::uint8_t keypad1 = 87, insert = 118, remove = 119, backspace = 22;
}  // namespace key

// A window or number that a property names; 0 when it names none.
std::uint32_t propertyOf(const X11Connection& connection, xcb_window_t window,
                         std::string_view name);

// Asks the window manager to bring the window to the front, on behalf of the user.
void activate(const X11Connection& connection, xcb_window_t window);

// Somebody at the desktop: presses physical keys and buttons through the test extension, sees which
// window is active and switches windows, on a connection of its own. Everything has reached the
// server when a call returns. On Wayland the keys are those of the compositor's virtual keyboard,
// fake input or remote desktop; the rest is X11's.
class TestUser {
public:
    using Keys = std::initializer_list<std::uint8_t>;

    explicit TestUser(const std::string& display = {});
    TestUser(const TestUser&) = delete;
    TestUser& operator=(const TestUser&) = delete;
    // Takes the hands off the keyboard, so that a test that failed leaves no key held for the next.
    ~TestUser();

    void press(std::uint8_t keycode) {
        held_.set(keycode);
        fake(XCB_KEY_PRESS, keycode);
    }
    void release(std::uint8_t keycode) {
        held_.reset(keycode);
        fake(XCB_KEY_RELEASE, keycode);
    }
    void tap(std::uint8_t keycode, int times = 1);
    void type(Keys keycodes) {
        for (const auto keycode : keycodes) tap(keycode);
    }
    // Lower-case letters and spaces, under the US layout.
    void type(std::string_view text);
    // Holds the modifiers around a tap of the key.
    void chord(Keys modifiers, std::uint8_t keycode);
    // Buttons as X counts them: left, middle, right, then four scroll directions.
    void pressButton(std::uint8_t button) { fake(XCB_BUTTON_PRESS, button); }
    void releaseButton(std::uint8_t button) { fake(XCB_BUTTON_RELEASE, button); }
    void click(std::uint8_t button) {
        pressButton(button);
        releaseButton(button);
    }

    // How many keys the server takes for held.
    std::size_t pressedKeys() const;
    // Whether no program holds the keyboard.
    bool canGrabKeyboard() const;

    xcb_window_t activeWindow() const {
        return propertyOf(connection_, connection_.root(), "_NET_ACTIVE_WINDOW");
    }
    void activate(xcb_window_t window) const { test::activate(connection_, window); }
    // Waits for a window of the process and sees to it that it is the active one, as a user does
    // who clicks it in the task bar: a window manager may keep a new window in the back.
    bool bringToFront(pid_t pid) const;
    bool waitForWindowOf(pid_t pid) const;
    // What a task bar shows.
    std::vector<xcb_window_t> windows() const;

private:
    bool isOf(xcb_window_t window, pid_t pid) const;
    void fake(std::uint8_t type, std::uint8_t detail);

    struct Wayland;
    struct Sway;
    struct Kwin;
    struct Gnome;

    X11Connection connection_;
    std::bitset<256> held_;
    std::unique_ptr<Wayland> wayland_;
};

}  // namespace quorvi::test
