#pragma once

#include <sys/socket.h>
#include <sys/un.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace quorvi {

// Where the program hears the helper `quorvi-shortcut`; empty without a runtime folder. Here alone,
// so that the helper, which runs 30 times a second, needs no library.
inline std::string commandAddress() {
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    return folder && *folder ? std::string(folder) + "/quorvi-shortcut" : std::string();
}

// Returns false if the path is empty or too long.
inline bool fill(sockaddr_un& address, const std::string& path) {
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path) return false;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    return true;
}

// The helper's words.
inline constexpr const char* dictateWord = "dictate";
inline constexpr const char* cancelWord = "cancel";
inline constexpr const char* guardWord = "guard";

}  // namespace quorvi
