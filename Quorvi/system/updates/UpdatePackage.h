#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <stop_token>

#include "Quorvi/system/updates/UpdateEnvironment.h"
#include "QuorviCore/updates/Appcast.h"

namespace quorvi {

// Deletes a folder of downloads with its content. Blocks on the disk; ignores failures.
void removeUpdateFolder(const std::filesystem::path& folder);

// Downloads the release's package into the folder, which it creates, and returns the verified file.
// On failure the folder is deleted; throws QuorviError, or Cancelled after a stop. The environment
// outlives the task.
Task<std::filesystem::path> downloadUpdate(const UpdateEnvironment& environment, AppcastItem item,
                                           std::filesystem::path folder,
                                           std::function<void(std::uint64_t)> progress,
                                           std::stop_token stop);

// Checks that the file's signature is valid and that its package is a newer Quorvi: a signature
// alone would also accept an old release announced as a new one. Repeated right before a file is
// handed over, since the user may wait in between. On failure deletes the file's folder and throws
// QuorviError.
Task<void> verifyUpdate(const UpdateEnvironment& environment, AppcastItem item,
                        std::filesystem::path file);

}  // namespace quorvi
