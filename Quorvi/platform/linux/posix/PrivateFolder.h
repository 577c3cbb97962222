#pragma once

#include <filesystem>

namespace quorvi {

// Creates a missing folder and those above it with mode 0700, durably. Throws std::system_error.
void makePrivateFolder(const std::filesystem::path& folder);

}  // namespace quorvi
