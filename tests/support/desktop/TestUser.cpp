#include "tests/support/desktop/TestUser.h"

#include <xcb/xtest.h>

#include <cstdlib>

#include "Quorvi/platform/linux/wayland/input/VirtualKeyboard.h"
#include "Quorvi/platform/linux/wayland/kwin/FakeInput.h"
#include "Quorvi/platform/linux/wayland/kwin/PlasmaWindows.h"
#include "Quorvi/platform/linux/wayland/sway/SwaySocket.h"
#include "Quorvi/platform/linux/wayland/sway/SwayTree.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/GnomeKeyboard.h"
#include "tests/support/desktop/UserClipboard.h"

namespace quorvi::test {

std::uint32_t propertyOf(const X11Connection& connection, xcb_window_t window,
                         std::string_view name) {
    const auto reply =
        connection.property(window, connection.atom(name), XCB_GET_PROPERTY_TYPE_ANY, 1);
    const auto numbers = numbersOf(reply);
    return numbers.empty() ? 0 : numbers.front();
}

void activate(const X11Connection& connection, xcb_window_t window) {
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

struct TestUser::Wayland {
    virtual ~Wayland() = default;
    virtual void key(std::uint8_t keycode, bool isDown, const std::bitset<256>& held) = 0;
    virtual bool hasFocus(pid_t pid) = 0;

    WaylandConnection connection;
};

struct TestUser::Sway final : Wayland {
    Sway() {
        keyboard.useUsLayout();
        connection.synchronise();
    }

    void key(std::uint8_t keycode, bool isDown, const std::bitset<256>& held) override {
        const auto any = [&](std::initializer_list<std::uint8_t> keys,
                             VirtualKeyboard::Modifier m) {
            for (const auto one : keys)
                if (held[one]) return static_cast<std::uint32_t>(m);
            return 0U;
        };
        keyboard.key(keycode - 8U, isDown);
        keyboard.modifiers(any({key::leftControl, key::rightControl}, VirtualKeyboard::control) |
                           any({key::leftShift}, VirtualKeyboard::shift) |
                           any({key::leftAlt, key::rightAlt}, VirtualKeyboard::alt) |
                           any({key::leftSuper}, VirtualKeyboard::super));
        connection.synchronise();
    }
    bool hasFocus(pid_t pid) override {
        const auto tree = socket.ask(SwaySocket::Message::tree);
        const auto window = tree ? focusedSwayWindow(*tree) : std::nullopt;
        return window && window->pid == pid;
    }

    VirtualKeyboard keyboard{connection};
    SwaySocket socket;
};

struct TestUser::Kwin final : Wayland {
    void key(std::uint8_t keycode, bool isDown, const std::bitset<256>&) override {
        input.key(keycode - 8U, isDown);
        connection.synchronise();
    }
    bool hasFocus(pid_t pid) override {
        connection.synchronise();
        const auto window = windows.active();
        return window && window->pid == pid;
    }

    FakeInput input{connection};
    PlasmaWindows windows{connection};
};

struct TestUser::Gnome final : Wayland {
    // The first key that is pressed makes the keyboard the seat's.
    Gnome() {
        for (const bool isDown : {true, false}) keyboard.send(key::leftShift, isDown);
    }
    void key(std::uint8_t keycode, bool isDown, const std::bitset<256>&) override {
        keyboard.send(keycode, isDown);
    }
    // The shell tells nobody which window it has given the focus.
    bool hasFocus(pid_t) override { return true; }

    GnomeKeyboard keyboard;
};

TestUser::TestUser(const std::string& display) : connection_(display) {
    if (!display.empty()) return;
    if (std::getenv("SWAYSOCK"))
        wayland_ = std::make_unique<Sway>();
    else if (isOnGnome())
        wayland_ = std::make_unique<Gnome>();
    else if (FakeInput::isOffered(WaylandConnection()))
        wayland_ = std::make_unique<Kwin>();
}

TestUser::~TestUser() {
    for (std::size_t keycode = 0; keycode < held_.size(); ++keycode)
        if (held_[keycode]) release(static_cast<std::uint8_t>(keycode));
}

void TestUser::tap(std::uint8_t keycode, int times) {
    for (; times > 0; --times) {
        press(keycode);
        release(keycode);
    }
}

void TestUser::type(std::string_view text) {
    for (const char c : text) {
        if (c == ' ') tap(key::space);
        const std::pair<std::string_view, std::size_t> rows[] = {
            {"qwertyuiop", 24}, {"asdfghjkl", 38}, {"zxcvbnm", 52}};
        for (const auto& [row, first] : rows)
            if (const auto at = row.find(c); at != row.npos)
                tap(static_cast<std::uint8_t>(first + at));
    }
}

void TestUser::chord(Keys modifiers, std::uint8_t keycode) {
    for (const auto modifier : modifiers) press(modifier);
    tap(keycode);
    for (auto one = modifiers.end(); one != modifiers.begin();) release(*--one);
}

std::size_t TestUser::pressedKeys() const {
    const auto reply =
        connection_.reply<xcb_query_keymap_reply>(xcb_query_keymap(connection_.get()));
    std::size_t count = 0;
    for (const auto eight : reply->keys) count += std::bitset<8>(eight).count();
    return count;
}

bool TestUser::canGrabKeyboard() const {
    auto* c = connection_.get();
    const auto reply = connection_.reply<xcb_grab_keyboard_reply>(xcb_grab_keyboard(
        c, 0, connection_.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    xcb_ungrab_keyboard(c, XCB_CURRENT_TIME);
    connection_.synchronise();
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

bool TestUser::bringToFront(pid_t pid) const {
    if (wayland_) return eventually([&] { return wayland_->hasFocus(pid); });
    return eventually([&] {
        if (isOf(activeWindow(), pid)) return true;
        for (const auto window : windows())
            if (isOf(window, pid)) activate(window);
        return false;
    });
}

bool TestUser::waitForWindowOf(pid_t pid) const {
    return eventually([&] { return isOf(activeWindow(), pid); });
}

bool TestUser::isOf(xcb_window_t window, pid_t pid) const {
    return window &&
           propertyOf(connection_, window, "_NET_WM_PID") == static_cast<std::uint32_t>(pid);
}

std::vector<xcb_window_t> TestUser::windows() const {
    const auto reply = connection_.property(
        connection_.root(), connection_.atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW, 100);
    const auto all = numbersOf(reply);
    return {all.begin(), all.end()};
}

void TestUser::fake(std::uint8_t type, std::uint8_t detail) {
    if (wayland_) return wayland_->key(detail, type == XCB_KEY_PRESS, held_);
    xcb_test_fake_input(connection_.get(), type, detail, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    connection_.synchronise();
}

}  // namespace quorvi::test
