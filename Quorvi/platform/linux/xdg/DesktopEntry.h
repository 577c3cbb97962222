#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quorvi {

// An entry of the desktop's menus or its autostart folder.
struct DesktopEntry {
    std::string program;    // the first word of the command; a path, or a name to look for in PATH
    bool isHidden = false;  // deleted or disabled by the user
    bool showsHere = true;  // in the running desktop

    // Returns nullopt if the file can't be read or is not an entry. `desktops` is the value of
    // XDG_CURRENT_DESKTOP.
    static std::optional<DesktopEntry> read(const std::filesystem::path& file,
                                            const std::string& desktops);
};

// Quotes a path as the command of an entry.
std::string quotedForExec(const std::string& path);

// The content of an entry that starts a program at login.
std::string autostartEntry(const std::string& program);

}  // namespace quorvi
