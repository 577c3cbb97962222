#pragma once

#include <map>
#include <optional>
#include <string>

#include "Quorvi/platform/Workspace.h"
#include "Quorvi/platform/linux/x11/X11ActiveWindow.h"

namespace quorvi {

// Finds the application that has the active window, and caches the names that it has looked up. For
// adapter sources; one thread.
class X11ActiveApplication {
public:
    explicit X11ActiveApplication(const X11Connection& connection);

    // The property of the root window that changes when another window becomes active.
    xcb_atom_t activeWindowAtom() const { return activeWindowAtom_; }

    // Returns nullopt if no window is active or its process is unknown.
    std::optional<RunningApplication> look();

    // Looks up the display name if the last look() did not have it; returns whether it did. Reads
    // the installed applications, which may take a while.
    bool lookUpName();

private:
    std::string nameOf(xcb_window_t window, pid_t pid);

    const X11Connection& connection_;
    xcb_atom_t activeWindowAtom_;
    std::map<X11WindowClass, std::string> names_;
    std::optional<X11WindowClass> unnamed_;
};

}  // namespace quorvi
