#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/posix/FileLock.h"
#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

// The identity of this machine in a shared folder, stored on this computer only. Two running
// programs with the same file get two identities, and so does a copy of the file on another
// computer: two writers with one identity would overwrite each other.
class FolderMachine {
public:
    // Reads the file, or creates a new identity. Throws std::system_error.
    explicit FolderMachine(const std::filesystem::path& file);

    // Returns the identities of this computer's programs, without taking one.
    static std::vector<Uuid> idsIn(const std::filesystem::path& file);

    // Writes the file durably. Throws std::system_error.
    void save();

    // Becomes a new machine without a folder.
    void renew();

    Uuid id;
    std::string folder;  // where it has written; empty if nowhere yet
    std::string owner;   // of that folder
    std::uint64_t reserved =
        0;  // no entry has a greater number; numbers of lost entries are not reused

private:
    std::filesystem::path file_;
    std::unique_ptr<FileLock> lock_;
};

}  // namespace quorvi
