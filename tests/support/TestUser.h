#pragma once

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <bitset>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {

// X keycodes of physical keys, as a person's keyboard sends them.
namespace key {
inline constexpr std::uint8_t escape = 9, a = 38, k = 45, s = 39, d = 40, l = 46, v = 55, x = 53,
                              tab = 23;
inline constexpr std::uint8_t leftControl = 37, rightControl = 105, leftShift = 50;
inline constexpr std::uint8_t leftAlt = 64, rightAlt = 108, leftSuper = 133;
inline constexpr std::uint8_t capsLock = 66, numLock = 77, space = 65, enter = 36, f6 = 72, f8 = 74;
inline constexpr std::uint8_t home = 110, end = 115, up = 111, down = 116, left = 113, right = 114;
inline constexpr std::uint8_t keypad1 = 87, insert = 118, remove = 119, backspace = 22;
}  // namespace key

// A window or number that a property names; 0 when it names none.
inline std::uint32_t propertyOf(const X11Connection& connection, xcb_window_t window,
                                std::string_view name) {
    auto* c = connection.get();
    const auto cookie =
        xcb_get_property(c, 0, window, connection.atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
    const auto reply = ownXcb(xcb_get_property_reply(c, cookie, nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) < 4) return 0;
    return *static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
}

// Asks the window manager to bring the window to the front, on behalf of the user.
inline void activate(const X11Connection& connection, xcb_window_t window) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = connection.atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = 2;
    xcb_send_event(connection.get(), 0, connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    connection.synchronise();
}

// Somebody at the desktop: presses physical keys and buttons through the test extension, sees which
// window is active and switches windows, on a connection of its own. Everything has reached the
// server when a call returns.
class TestUser {
public:
    using Keys = std::initializer_list<std::uint8_t>;

    explicit TestUser(const std::string& display = {}) : connection_(display) {}
    TestUser(const TestUser&) = delete;
    TestUser& operator=(const TestUser&) = delete;
    // Takes the hands off the keyboard, so that a test that failed leaves no key held for the next.
    ~TestUser() {
        for (std::size_t keycode = 0; keycode < held_.size(); ++keycode)
            if (held_[keycode]) release(static_cast<std::uint8_t>(keycode));
    }

    void press(std::uint8_t keycode) {
        held_.set(keycode);
        fake(XCB_KEY_PRESS, keycode);
    }
    void release(std::uint8_t keycode) {
        held_.reset(keycode);
        fake(XCB_KEY_RELEASE, keycode);
    }
    void tap(std::uint8_t keycode, int times = 1) {
        for (; times > 0; --times) {
            press(keycode);
            release(keycode);
        }
    }
    void type(Keys keycodes) {
        for (const auto keycode : keycodes) tap(keycode);
    }
    // Lower-case letters and spaces, under the US layout.
    void type(std::string_view text) {
        for (const char c : text) {
            if (c == ' ') tap(key::space);
            const std::pair<std::string_view, std::size_t> rows[] = {
                {"qwertyuiop", 24}, {"asdfghjkl", 38}, {"zxcvbnm", 52}};
            for (const auto& [row, first] : rows)
                if (const auto at = row.find(c); at != row.npos)
                    tap(static_cast<std::uint8_t>(first + at));
        }
    }
    // Holds the modifiers around a tap of the key.
    void chord(Keys modifiers, std::uint8_t keycode) {
        for (const auto modifier : modifiers) press(modifier);
        tap(keycode);
        for (auto one = modifiers.end(); one != modifiers.begin();) release(*--one);
    }
    // Buttons as X counts them: left, middle, right, then four scroll directions.
    void pressButton(std::uint8_t button) { fake(XCB_BUTTON_PRESS, button); }
    void releaseButton(std::uint8_t button) { fake(XCB_BUTTON_RELEASE, button); }
    void click(std::uint8_t button) {
        pressButton(button);
        releaseButton(button);
    }

    // How many keys the server takes for held.
    std::size_t pressedKeys() const {
        auto* c = connection_.get();
        const auto reply = ownXcb(xcb_query_keymap_reply(c, xcb_query_keymap(c), nullptr));
        std::size_t count = 0;
        for (const auto eight : reply->keys) count += std::bitset<8>(eight).count();
        return count;
    }
    // Whether no program holds the keyboard.
    bool canGrabKeyboard() const {
        auto* c = connection_.get();
        const auto cookie = xcb_grab_keyboard(c, 0, connection_.root(), XCB_CURRENT_TIME,
                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const auto reply = ownXcb(xcb_grab_keyboard_reply(c, cookie, nullptr));
        xcb_ungrab_keyboard(c, XCB_CURRENT_TIME);
        connection_.synchronise();
        return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }

    xcb_window_t activeWindow() const {
        return propertyOf(connection_, connection_.root(), "_NET_ACTIVE_WINDOW");
    }
    void activate(xcb_window_t window) const { test::activate(connection_, window); }
    // Waits for a window of the process and sees to it that it is the active one, as a user does
    // who clicks it in the task bar: a window manager may keep a new window in the back.
    bool bringToFront(pid_t pid) const {
        const auto isOf = [&](xcb_window_t window) {
            return window && propertyOf(connection_, window, "_NET_WM_PID") ==
                                 static_cast<std::uint32_t>(pid);
        };
        return eventually([&] {
            if (isOf(activeWindow())) return true;
            for (const auto window : windows())
                if (isOf(window)) activate(window);
            return false;
        });
    }
    bool waitForWindowOf(pid_t pid) const {
        return eventually([&] {
            const auto window = activeWindow();
            return window && propertyOf(connection_, window, "_NET_WM_PID") ==
                                 static_cast<std::uint32_t>(pid);
        });
    }

private:
    std::vector<xcb_window_t> windows() const {
        auto* c = connection_.get();
        const auto cookie =
            xcb_get_property(c, 0, connection_.root(), connection_.atom("_NET_CLIENT_LIST"),
                             XCB_ATOM_WINDOW, 0, 100);
        const auto reply = ownXcb(xcb_get_property_reply(c, cookie, nullptr));
        if (!reply) return {};
        const auto* first = static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
        return {first, first + xcb_get_property_value_length(reply.get()) / 4};
    }
    void fake(std::uint8_t type, std::uint8_t detail) {
        xcb_test_fake_input(connection_.get(), type, detail, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        connection_.synchronise();
    }

    X11Connection connection_;
    std::bitset<256> held_;
};

}  // namespace quorvi::test
