#pragma once

#include <filesystem>

namespace quorvi {

// Makes a folder that is missing, with those above it, for the user alone (0700), and durably.
// Throws std::system_error.
void makePrivateFolder(const std::filesystem::path& folder);

}  // namespace quorvi
