#pragma once

#include <optional>
#include <string_view>

#include "Quorvi/platform/linux/wayland/FrontmostWindow.h"

namespace quorvi {

// Finds the focused window in the tree that sway describes in JSON; nullopt if none has the focus.
std::optional<FocusedWindow> focusedSwayWindow(std::string_view tree);

}  // namespace quorvi
