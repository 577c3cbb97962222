#pragma once

#include <filesystem>

#include "Quorvi/platform/linux/xdg/UserFolders.h"

// The files that hold the user's data.
namespace quorvi {

inline std::filesystem::path preferencesFile() {
    return UserFolders::find().config / "preferences.plist";
}

// Written by the user, see docs/user/paste-keys.md.
inline std::filesystem::path pasteChordsFile() {
    return UserFolders::find().config / "paste-keys";
}

inline std::filesystem::path historyFile() {
    return UserFolders::find().data / "history.json";
}

// Exists during a dictation, and after a crash.
inline std::filesystem::path interruptionNoteFile() {
    return UserFolders::find().data / "dictation-under-way";
}

// Exists if the user lets Quorvi press keys on a desktop where that takes a leave. Of this machine
// only.
inline std::filesystem::path keyConsentFile() {
    return UserFolders::find().data / "key-consent";
}

inline std::filesystem::path syncArchiveFile() {
    return UserFolders::find().data / "account-sync.json";
}

}  // namespace quorvi
