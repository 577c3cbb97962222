#pragma once

#include <filesystem>

namespace quorvi {

// Where this user's files belong, by the XDG Base Directory rules. The folders need not exist.
struct UserFolders {
    std::filesystem::path data;    // $XDG_DATA_HOME/Quorvi: what the user would miss
    std::filesystem::path config;  // $XDG_CONFIG_HOME/Quorvi: preferences
    // Of files that last for seconds: in $XDG_RUNTIME_DIR if that is this user's, otherwise in
    // $XDG_CACHE_HOME/Quorvi.
    std::filesystem::path recordings;

    // From the environment. Ignores a variable that is empty or not an absolute path; without HOME
    // the account's home folder counts. Throws std::runtime_error if there is none.
    static UserFolders find();
};

}  // namespace quorvi
