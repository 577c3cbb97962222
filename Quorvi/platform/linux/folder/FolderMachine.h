#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "Quorvi/platform/linux/posix/FileLock.h"
#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

// Who this program is to the others in a shared folder, kept on this computer alone. Two programs
// that run at once with the same file are two machines, and so is a copy of the file on another
// computer: two that wrote as one would overwrite each other.
class FolderMachine {
public:
    // Reads what is there, or begins anew. Throws std::system_error.
    explicit FolderMachine(const std::filesystem::path& file);

    // Makes what has changed durable. Throws std::system_error.
    void save();

    // A new machine, of no folder yet.
    void renew();

    Uuid id;
    std::string folder;  // where it has written; empty: nowhere yet
    std::string owner;   // of that folder
    std::uint64_t reserved =
        0;  // no entry has a greater number; entries that were lost keep theirs

private:
    std::filesystem::path file_;
    std::unique_ptr<FileLock> lock_;
};

}  // namespace quorvi
