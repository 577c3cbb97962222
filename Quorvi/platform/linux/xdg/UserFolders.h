#pragma once

#include <filesystem>

namespace quorvi {

// Where this user's files belong, by the XDG Base Directory rules. The folders need not exist.
struct UserFolders {
    std::filesystem::path data;    // $XDG_DATA_HOME/Quorvi: what the user would miss
    std::filesystem::path config;  // $XDG_CONFIG_HOME/Quorvi: preferences

    // From the environment. A variable that is empty or not an absolute path does not count;
    // without HOME the account's folder does. Throws std::runtime_error when there is none either.
    static UserFolders find();
};

}  // namespace quorvi
