#pragma once

#include <cstdlib>
#include <string>

#include "tests/support/Process.h"

namespace quorvi::test {

// Whether the desktop of this run is a private sway.
inline bool isOnSway() {
    return std::getenv("SWAYSOCK") != nullptr;
}

// The user's clipboard, as other programs copy and paste.
inline void copyFile(const std::string& file) {
    shell(isOnSway() ? "wl-copy <" + file
                     : "xclip -selection clipboard -i " + file + " >/dev/null");
}
inline std::string pastedText() {
    return shell(isOnSway()
                     ? "timeout 20 wl-paste --no-newline --type UTF8_STRING 2>/dev/null"
                     : "timeout 20 xclip -selection clipboard -o -t UTF8_STRING 2>/dev/null");
}

}  // namespace quorvi::test
