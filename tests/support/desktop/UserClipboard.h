#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

#include "tests/support/Process.h"

namespace quorvi::test {

// Which private desktop this run has, else one of X11.
inline bool isOnSway() {
    return std::getenv("SWAYSOCK") != nullptr;
}
inline bool isOn(std::string_view name) {
    const char* desktop = std::getenv("XDG_CURRENT_DESKTOP");
    return desktop && desktop == name;
}
inline bool isOnKde() {
    return isOn("KDE");
}
inline bool isOnGnome() {
    return isOn("GNOME");
}

// The user's clipboard, as other programs copy and paste.
inline void copyFile(const std::string& file) {
    shell(isOnSway() || isOnKde() ? "wl-copy --type text/plain <" + file
                                  : "xclip -selection clipboard -i " + file + " >/dev/null");
}
inline std::string pastedText() {
    return shell(isOnSway() || isOnKde()
                     ? "timeout 20 wl-paste --no-newline --type UTF8_STRING 2>/dev/null"
                     : "timeout 20 xclip -selection clipboard -o -t UTF8_STRING 2>/dev/null");
}

}  // namespace quorvi::test
