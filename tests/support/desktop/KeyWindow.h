#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <string_view>
#include <vector>

#include "tests/support/desktop/TestUser.h"

namespace quorvi::test {

// What a window receives when these keys are tapped one after the other.
std::vector<int> taps(TestUser::Keys keycodes);

// A small application window that has the keyboard focus and writes down the keys it receives.
class KeyWindow {
public:
    explicit KeyWindow(const std::string& className = "KeyWindow", const std::string& display = {});

    // Shows the window and waits until it has the focus. With a window manager it is the active
    // window then, too.
    bool show();
    // Takes the focus as a program may that was asked to by its user.
    bool focus();

    xcb_window_t window() const { return window_; }
    const X11Connection& connection() const { return connection_; }

    // The keycodes that have arrived so far and were sent before this call, those of releases
    // negative.
    const std::vector<int>& keys();
    void forget() {
        keys();
        keys_.clear();
    }
    // Whether exactly these arrive.
    bool waitForKeys(const std::vector<int>& expected);
    bool waitForKey(int key) {
        return waitFor([&] { return std::ranges::count(keys_, key) > 0; });
    }
    bool hasSeen(int keycode) { return std::ranges::count(keys(), keycode) > 0; }
    // Reads events until the condition holds; false after a generous limit.
    bool waitFor(const std::function<bool()>& condition,
                 std::chrono::seconds limit = std::chrono::seconds(20));

private:
    std::uint32_t rootProperty(std::string_view name) const {
        return propertyOf(connection_, connection_.root(), name);
    }
    bool hasWindowManager() const { return rootProperty("_NET_SUPPORTING_WM_CHECK") != XCB_NONE; }
    bool isFocused() const {
        return focused_ && (!hasWindowManager() || rootProperty("_NET_ACTIVE_WINDOW") == window_);
    }
    void requestFocus();
    void readEvents();

    X11Connection connection_;
    xcb_window_t window_ = XCB_NONE;
    std::vector<int> keys_;
    bool focused_ = false;
};

}  // namespace quorvi::test
