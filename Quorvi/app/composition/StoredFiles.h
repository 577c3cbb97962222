#pragma once

#include <filesystem>

#include "Quorvi/platform/linux/xdg/UserFolders.h"

// Where the program keeps what is the user's.
namespace quorvi {

inline std::filesystem::path preferencesFile() {
    return UserFolders::find().config / "preferences.plist";
}

inline std::filesystem::path historyFile() {
    return UserFolders::find().data / "history.json";
}

// There while a dictation is under way, and after a crash.
inline std::filesystem::path interruptionNoteFile() {
    return UserFolders::find().data / "dictation-under-way";
}

inline std::filesystem::path syncArchiveFile() {
    return UserFolders::find().data / "account-sync.json";
}

}  // namespace quorvi
