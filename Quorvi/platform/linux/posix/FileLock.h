#pragma once

#include <filesystem>

#include "Quorvi/platform/linux/posix/Descriptor.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Keeps other processes, and other threads of this one, from the files that go by this lock, while
// it lives. A process that dies lets go of its locks. Blocks, so it is not for the main thread.
class FileLock {
public:
    // Makes the file, and the folder (0700) when that is missing. Throws std::system_error, also
    // when another process holds on to the lock for longer than `patience`.
    FileLock(const std::filesystem::path& file, Duration patience);

private:
    const Descriptor descriptor_;
};

}  // namespace quorvi
