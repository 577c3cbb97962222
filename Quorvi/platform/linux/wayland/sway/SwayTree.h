#pragma once

#include <sys/types.h>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvi {

// The window that has the focus. A plain value.
struct SwayWindow {
    pid_t pid = 0;
    std::string name;  // its program's name for itself: the application id, or the X11 class
    std::uint64_t id = 0;

    bool operator==(const SwayWindow&) const = default;
};

// Finds the focused window in the tree that sway describes in JSON; nullopt if none has the focus.
std::optional<SwayWindow> focusedSwayWindow(std::string_view tree);

}  // namespace quorvi
