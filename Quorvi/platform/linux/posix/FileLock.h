#pragma once

#include <filesystem>

#include "Quorvi/platform/linux/posix/Descriptor.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Excludes other processes, and other threads of this one, while it lives. The lock of a process
// that dies is released. Blocks, so not for the main thread.
class FileLock {
public:
    // Creates the file, and its folder (0700) if that is missing. Throws std::system_error, also if
    // the lock stays taken for longer than `patience`.
    FileLock(const std::filesystem::path& file, Duration patience);

private:
    const Descriptor descriptor_;
};

}  // namespace quorvi
