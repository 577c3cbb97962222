#pragma once

#include <filesystem>

#include "Quorvi/platform/CloudDatabase.h"

namespace quorvi {

// What a failure of the file system means to the cloud's user: missing mounts are a network that is
// down, a read-only folder is a permission that is missing, a full disk a quota that is used up.
CloudError folderError(int error, const char* what, const std::filesystem::path& path);
// Throws it for the present errno.
[[noreturn]] void failFolder(const char* what, const std::filesystem::path& path);

}  // namespace quorvi
