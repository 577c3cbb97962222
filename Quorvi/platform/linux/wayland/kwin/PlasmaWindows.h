#pragma once

#include <map>
#include <optional>

#include "Quorvi/platform/linux/wayland/FrontmostWindow.h"
#include "Quorvi/platform/linux/wayland/WaylandConnection.h"

struct org_kde_plasma_window;
struct org_kde_plasma_window_management;

namespace quorvi {

// The windows as KWin lists them, also those of X11 programs. KWin offers the list to a program
// whose desktop entry asks for it. For adapter sources only; the thread of its connection, which
// outlives it.
class PlasmaWindows {
public:
    static bool isOffered(const WaylandConnection& connection);

    explicit PlasmaWindows(WaylandConnection& connection);
    ~PlasmaWindows();
    PlasmaWindows(const PlasmaWindows&) = delete;
    PlasmaWindows& operator=(const PlasmaWindows&) = delete;

    // The window that has the focus, once KWin has told of which program it is.
    std::optional<FocusedWindow> active() const;

private:
    struct Listeners;
    struct Window {
        FocusedWindow whole;
        bool isActive = false;
    };

    std::map<org_kde_plasma_window*, Window> windows_;
    org_kde_plasma_window_management* manager_ = nullptr;
};

}  // namespace quorvi
