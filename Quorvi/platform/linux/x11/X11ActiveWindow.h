#pragma once

#include <sys/types.h>
#include <string>

#include "Quorvi/platform/linux/x11/X11Connection.h"

namespace quorvi {

// Both parts of a window's WM_CLASS; empty if it has none.
struct X11WindowClass {
    std::string instance;
    std::string name;

    bool isEmpty() const { return instance.empty() && name.empty(); }
    auto operator<=>(const X11WindowClass&) const = default;
};

// The window that the window manager calls active; XCB_NONE if there is none.
xcb_window_t x11ActiveWindow(const X11Connection& connection);

// The process behind a window's client, as the server knows it: what a window says of itself may be
// missing, or be a number inside a container. For a client on another computer what the window
// says. 0 if neither is known.
pid_t x11ProcessOf(const X11Connection& connection, xcb_window_t window);

// Whether the same client made both windows.
bool x11SameClient(const X11Connection& connection, xcb_window_t one, xcb_window_t other);

X11WindowClass x11WindowClass(const X11Connection& connection, xcb_window_t window);

}  // namespace quorvi
