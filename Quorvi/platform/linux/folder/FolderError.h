#pragma once

#include <filesystem>

#include "Quorvi/platform/CloudDatabase.h"

namespace quorvi {

// Maps a file system error to a CloudError: a missing mount to an unavailable network, a read-only
// folder to a missing permission, a full disk to an exceeded quota.
CloudError folderError(int error, const char* what, const std::filesystem::path& path);
// Throws the CloudError for the current errno.
[[noreturn]] void failFolder(const char* what, const std::filesystem::path& path);

}  // namespace quorvi
