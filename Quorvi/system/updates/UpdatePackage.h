#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <stop_token>

#include "Quorvi/system/updates/UpdateEnvironment.h"
#include "QuorviCore/updates/Appcast.h"

namespace quorvi {

// Deletes a folder of downloads with what is in it. Blocks on the disk; failures are ignored.
void removeUpdateFolder(const std::filesystem::path& folder);

// Downloads the release's package into the folder, which is made for it, and yields the file once
// it is verified. Otherwise the folder is gone and QuorviError says why; Cancelled after a stop.
// The environment outlives the task.
Task<std::filesystem::path> downloadUpdate(const UpdateEnvironment& environment, AppcastItem item,
                                           std::filesystem::path folder,
                                           std::function<void(std::uint64_t)> progress,
                                           std::stop_token stop);

// Passes when the file's signature is valid and the package says itself that it is a newer Quorvi:
// the signature alone would also hold for an old release that somebody announces as a new one. Done
// again right before a file is handed over, so that what is opened is what was signed, however long
// the user has waited. Throws QuorviError; the file's folder is then gone.
Task<void> verifyUpdate(const UpdateEnvironment& environment, AppcastItem item,
                        std::filesystem::path file);

}  // namespace quorvi
