#pragma once

#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>
#include <iostream>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/platform/linux/X11Connection.h"

namespace quorvi::test {

// A small application window that has the keyboard focus and writes down the keys it receives.
class KeyWindow {
public:
    struct Key {
        std::uint8_t keycode;
        bool down;
        bool operator==(const Key&) const = default;
        friend void PrintTo(const Key& key, std::ostream* out) {
            *out << static_cast<int>(key.keycode) << (key.down ? " down" : " up");
        }
    };

    explicit KeyWindow(const std::string& className = "KeyWindow", const std::string& display = {})
        : connection_(display) {
        auto* c = connection_.get();
        window_ = xcb_generate_id(c);
        const std::uint32_t events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                     XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_create_window(c, XCB_COPY_FROM_PARENT, window_, connection_.root(), 0, 0, 300, 200, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                          &events);
        const auto both = className + '\0' + className + '\0';
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
                            8, static_cast<std::uint32_t>(both.size()), both.data());
        const auto pid = static_cast<std::uint32_t>(getpid());
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, window_, connection_.atom("_NET_WM_PID"),
                            XCB_ATOM_CARDINAL, 32, 1, &pid);
    }

    // Shows the window and waits until it has the focus. With a window manager it is the active
    // window then, too.
    bool show() {
        auto* c = connection_.get();
        for (int attempt = 0; attempt < 10; ++attempt) {
            xcb_map_window(c, window_);
            if (!hasWindowManager()) requestFocus();
            xcb_flush(c);
            if (waitFor([this] { return isFocused(); }, std::chrono::seconds(2))) return true;
            // A window manager that is just starting overlooks a window that appears right then.
            xcb_unmap_window(c, window_);
        }
        return false;
    }

    // Takes the focus as a program may that was asked to by its user.
    bool focus() {
        for (int attempt = 0; attempt < 20; ++attempt) {
            if (waitFor([this] { return isFocused(); }, std::chrono::seconds(1))) return true;
            requestFocus();
        }
        return false;
    }

    xcb_window_t window() const { return window_; }
    const X11Connection& connection() const { return connection_; }

    // What has arrived so far, and was sent before this call.
    const std::vector<Key>& keys() {
        connection_.synchronise();
        readEvents();
        return keys_;
    }
    void forget() {
        keys();
        keys_.clear();
    }

    // Whether exactly these arrive.
    bool waitForKeys(const std::vector<Key>& expected) {
        if (waitFor([&] { return keys_ == expected; })) return true;
        for (const auto& key : keys_) {
            PrintTo(key, &std::cerr);
            std::cerr << ", ";
        }
        std::cerr << "arrived\n";
        return false;
    }
    bool waitForKey(Key key) {
        return waitFor([&] { return std::find(keys_.begin(), keys_.end(), key) != keys_.end(); });
    }

    // Reads events until the condition holds; false after a generous limit.
    bool waitFor(const std::function<bool()>& condition,
                 std::chrono::seconds limit = std::chrono::seconds(20)) {
        const auto end = std::chrono::steady_clock::now() + limit;
        for (;;) {
            readEvents();
            if (condition()) return true;
            if (std::chrono::steady_clock::now() > end) return false;
            pollfd descriptor{connection_.fileDescriptor(), POLLIN, 0};
            poll(&descriptor, 1, 20);
        }
    }

private:
    bool isFocused() const {
        return focused_ && (!hasWindowManager() || activeWindow() == window_);
    }

    void requestFocus() {
        auto* c = connection_.get();
        if (!hasWindowManager()) {
            xcb_set_input_focus(c, XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
            xcb_flush(c);
            return;
        }
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window_;
        message.type = connection_.atom("_NET_ACTIVE_WINDOW");
        message.data.data32[0] = 2;  // on behalf of the user
        xcb_send_event(c, 0, connection_.root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&message));
        xcb_flush(c);
    }

    void readEvents() {
        while (const auto event = ownXcb(xcb_poll_for_event(connection_.get()))) {
            const auto type = xcbEventType(*event);
            if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE)
                keys_.push_back(
                    {reinterpret_cast<const xcb_key_press_event_t*>(event.get())->detail,
                     type == XCB_KEY_PRESS});
            if (type == XCB_FOCUS_IN || type == XCB_FOCUS_OUT) noteFocus(*event);
        }
    }

    void noteFocus(const xcb_generic_event_t& event) {
        const auto& focus = reinterpret_cast<const xcb_focus_in_event_t&>(event);
        if (focus.mode == XCB_NOTIFY_MODE_GRAB || focus.mode == XCB_NOTIFY_MODE_UNGRAB) return;
        if (focus.detail != XCB_NOTIFY_DETAIL_POINTER)
            focused_ = xcbEventType(event) == XCB_FOCUS_IN;
    }

    xcb_window_t windowProperty(xcb_window_t window, std::string_view name) const {
        auto* c = connection_.get();
        const auto cookie =
            xcb_get_property(c, 0, window, connection_.atom(name), XCB_ATOM_WINDOW, 0, 1);
        const auto reply = ownXcb(xcb_get_property_reply(c, cookie, nullptr));
        if (!reply || xcb_get_property_value_length(reply.get()) < 4) return XCB_NONE;
        return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
    }
    bool hasWindowManager() const {
        return windowProperty(connection_.root(), "_NET_SUPPORTING_WM_CHECK") != XCB_NONE;
    }
    xcb_window_t activeWindow() const {
        return windowProperty(connection_.root(), "_NET_ACTIVE_WINDOW");
    }

    X11Connection connection_;
    xcb_window_t window_ = XCB_NONE;
    std::vector<Key> keys_;
    bool focused_ = false;
};

}  // namespace quorvi::test
