#pragma once

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

X11WindowClass x11WindowClass(const X11Connection& connection, xcb_window_t window);

}  // namespace quorvi
