#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quorvi {

// What an entry for the desktop's menus and its autostart says of the program that it starts.
struct DesktopEntry {
    std::string program;    // the first word of the command; a path, or a name to look for in PATH
    bool isHidden = false;  // deleted or disabled by the user
    bool showsHere = true;  // in the running desktop

    // Nothing when the file can't be read or makes no sense. `desktops` is the value of
    // XDG_CURRENT_DESKTOP.
    static std::optional<DesktopEntry> read(const std::filesystem::path& file,
                                            const std::string& desktops);
};

// A path as the command of an entry: quoted, with nothing in it that means something else there.
std::string quotedForExec(const std::string& path);

// The content of an entry that starts a program at login.
std::string autostartEntry(const std::string& program);

}  // namespace quorvi
