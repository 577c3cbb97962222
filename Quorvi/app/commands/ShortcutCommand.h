#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace quorvi {

// Runs `quorvi shortcut install` or `remove`: Quorvi's entries among the shortcuts in the desktop's
// settings. And `release`, for quorvi-shortcut: gives back what a killed run has left bound, Escape
// on GNOME, all keys on KDE. Returns the exit status, or nullopt if the arguments name none of
// them.
std::optional<int> runShortcutCommand(const std::vector<std::string_view>& arguments);

// Removes the entries. Returns false if that fails; true also where there are none.
bool removeDesktopShortcuts();

}  // namespace quorvi
