#pragma once

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <poll.h>
#include <sys/types.h>

#include <chrono>
#include <functional>
#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quorvi::testing {

// The user of a test's desktop: sees which window is active, switches windows and presses keys,
// all through an X connection of its own. Include this header after GoogleTest: Xlib defines short
// names, of which the worst are taken back below.
class DesktopUser {
public:
    DesktopUser() : display_(XOpenDisplay(nullptr)) {
        if (!display_) throw std::runtime_error("no display");
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });  // windows vanish
        XSelectInput(display_, root(), PropertyChangeMask);
    }
    ~DesktopUser() { XCloseDisplay(display_); }
    DesktopUser(const DesktopUser&) = delete;
    DesktopUser& operator=(const DesktopUser&) = delete;

    Window activeWindow() { return property(root(), "_NET_ACTIVE_WINDOW").value_or(0); }
    pid_t processOf(Window window) {
        return static_cast<pid_t>(property(window, "_NET_WM_PID").value_or(0));
    }
    pid_t activeProcess() {
        const auto window = activeWindow();
        return window ? processOf(window) : 0;
    }

    // Waits on the window manager's announcements until the condition holds.
    bool waitUntil(const std::function<bool()>& condition,
                   std::chrono::seconds limit = std::chrono::seconds(60)) {
        const auto end = std::chrono::steady_clock::now() + limit;
        while (!condition()) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(
                end - std::chrono::steady_clock::now());
            if (left.count() <= 0) return false;
            while (XPending(display_) > 0) {
                XEvent event;
                XNextEvent(display_, &event);
            }
            pollfd source{ConnectionNumber(display_), POLLIN, 0};
            poll(&source, 1, static_cast<int>(std::min<long>(left.count(), 500)));
        }
        return true;
    }
    bool waitForWindowOf(pid_t pid) {
        return waitUntil([&] { return activeProcess() == pid; });
    }

    void activate(Window window) {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = window;
        event.xclient.message_type = atom("_NET_ACTIVE_WINDOW");
        event.xclient.format = 32;
        event.xclient.data.l[0] = 2;  // asked for by the user
        XSendEvent(display_, root(), False, SubstructureRedirectMask | SubstructureNotifyMask,
                   &event);
        XFlush(display_);
    }

    // Presses the keys in order and releases them in the opposite order: press({XK_Shift_L, XK_a}).
    void press(std::initializer_list<KeySym> keys) {
        for (auto key : keys) fake(key, true);
        for (auto key = keys.end(); key != keys.begin();) fake(*--key, false);
        XSync(display_, False);
    }

    // Lower-case letters, digits and spaces.
    void type(std::string_view text) {
        for (const char c : text) press({static_cast<KeySym>(static_cast<unsigned char>(c))});
    }

private:
    Window root() { return DefaultRootWindow(display_); }
    Atom atom(const char* name) { return XInternAtom(display_, name, False); }
    void fake(KeySym key, bool down) {
        XTestFakeKeyEvent(display_, XKeysymToKeycode(display_, key), down ? 1 : 0, CurrentTime);
    }

    std::optional<unsigned long> property(Window window, const char* name) {
        Atom type = 0;
        int format = 0;
        unsigned long count = 0, left = 0;
        unsigned char* data = nullptr;
        if (XGetWindowProperty(display_, window, atom(name), 0, 1, False, AnyPropertyType, &type,
                               &format, &count, &left, &data) != 0 ||
            !data)
            return std::nullopt;
        std::optional<unsigned long> value;
        if (format == 32 && count > 0) value = *reinterpret_cast<unsigned long*>(data);
        XFree(data);
        return value;
    }

    Display* display_;
};

}  // namespace quorvi::testing

#undef Bool
#undef None
#undef Status
#undef Success
