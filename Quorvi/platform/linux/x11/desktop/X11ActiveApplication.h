#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "Quorvi/platform/Workspace.h"
#include "Quorvi/platform/linux/x11/X11Connection.h"

namespace quorvi {

// Finds out whose window is active. Used on one thread, for adapter sources; remembers the names
// that it has looked up.
class X11ActiveApplication {
public:
    explicit X11ActiveApplication(const X11Connection& connection);

    // The property of the root window that changes with the answer.
    xcb_atom_t activeWindowAtom() const { return activeWindowAtom_; }

    // Nothing when no window is active or it tells no process.
    std::optional<RunningApplication> look();

    // Looks up the display name that the last look() had to do without; true when there is one now.
    // Reads the installed applications, so it may take a while.
    bool lookUpName();

private:
    XcbPointer<xcb_get_property_reply_t> property(xcb_window_t window, xcb_atom_t name,
                                                  xcb_atom_t type, std::uint32_t words) const;
    std::optional<std::uint32_t> number(xcb_window_t window, xcb_atom_t name,
                                        xcb_atom_t type) const;
    pid_t processOf(xcb_window_t window) const;
    std::pair<std::string, std::string> classOf(xcb_window_t window) const;
    std::string nameOf(xcb_window_t window, pid_t pid);

    const X11Connection& connection_;
    xcb_atom_t activeWindowAtom_;
    xcb_atom_t processAtom_;
    bool canAskForClients_;
    using WindowClass = std::pair<std::string, std::string>;
    std::map<WindowClass, std::string> names_;
    std::optional<WindowClass> unnamed_;
};

}  // namespace quorvi
