#include "tests/support/desktop/KeyWindow.h"

#include <poll.h>
#include <unistd.h>

#include <iostream>

namespace quorvi::test {

std::vector<int> taps(TestUser::Keys keycodes) {
    std::vector<int> keys;
    for (const int keycode : keycodes) keys.insert(keys.end(), {keycode, -keycode});
    return keys;
}

KeyWindow::KeyWindow(const std::string& className, const std::string& display)
    : connection_(display) {
    auto* c = connection_.get();
    window_ = xcb_generate_id(c);
    const std::uint32_t events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                 XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window_, connection_.root(), 0, 0, 300, 200, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    const auto both = className + '\0' + className + '\0';
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(both.size()), both.data());
    const auto pid = static_cast<std::uint32_t>(getpid());
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, window_, connection_.atom("_NET_WM_PID"),
                        XCB_ATOM_CARDINAL, 32, 1, &pid);
}

bool KeyWindow::show() {
    for (int attempt = 0; attempt < 10; ++attempt) {
        xcb_map_window(connection_.get(), window_);
        if (!hasWindowManager()) requestFocus();
        connection_.synchronise();
        if (waitFor([this] { return isFocused(); }, std::chrono::seconds(2))) return true;
        // A window manager that is just starting overlooks a window that appears right then.
        xcb_unmap_window(connection_.get(), window_);
    }
    return false;
}

bool KeyWindow::focus() {
    for (int attempt = 0; attempt < 20; ++attempt) {
        if (waitFor([this] { return isFocused(); }, std::chrono::seconds(1))) return true;
        requestFocus();
    }
    return false;
}

const std::vector<int>& KeyWindow::keys() {
    connection_.synchronise();
    readEvents();
    return keys_;
}

bool KeyWindow::waitForKeys(const std::vector<int>& expected) {
    if (waitFor([&] { return keys_ == expected; })) return true;
    for (const auto key : keys_) std::cerr << key << ", ";
    std::cerr << "arrived\n";
    return false;
}

bool KeyWindow::waitFor(const std::function<bool()>& condition, std::chrono::seconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    for (;;) {
        readEvents();
        if (condition()) return true;
        if (std::chrono::steady_clock::now() > end) return false;
        pollfd descriptor{connection_.fileDescriptor(), POLLIN, 0};
        poll(&descriptor, 1, 20);
    }
}

void KeyWindow::requestFocus() {
    if (hasWindowManager()) return activate(connection_, window_);
    xcb_set_input_focus(connection_.get(), XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
    xcb_flush(connection_.get());
}

void KeyWindow::readEvents() {
    while (const auto event = connection_.nextEvent()) {
        const auto type = xcbEventType(*event);
        const int keycode = reinterpret_cast<const xcb_key_press_event_t*>(event.get())->detail;
        if (type == XCB_KEY_PRESS) keys_.push_back(keycode);
        if (type == XCB_KEY_RELEASE) keys_.push_back(-keycode);
        if (type != XCB_FOCUS_IN && type != XCB_FOCUS_OUT) continue;
        const auto& focus = reinterpret_cast<const xcb_focus_in_event_t&>(*event);
        const bool grab =
            focus.mode == XCB_NOTIFY_MODE_GRAB || focus.mode == XCB_NOTIFY_MODE_UNGRAB;
        if (!grab && focus.detail != XCB_NOTIFY_DETAIL_POINTER) focused_ = type == XCB_FOCUS_IN;
    }
}

}  // namespace quorvi::test
