#pragma once

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

// A machine that has written into a shared folder.
struct FolderComputer {
    Uuid id;
    std::string name;  // its user's or its host's; empty if it is not known
    std::time_t lastChange = 0;
    std::uint64_t bytes = 0;  // of its files
};

// Returns the machines of a folder, the last active first; none if there is no such folder.
std::vector<FolderComputer> folderComputers(const std::filesystem::path& folder);

// Returns the file with the name that the user has given this computer, beside its identity.
std::filesystem::path computerNameFile(const std::filesystem::path& machineFile);

// Stores that name, of which control characters and what is too long are left out. An empty name
// stands for that of the host. Throws std::system_error.
void storeComputerName(const std::filesystem::path& nameFile, const std::string& name);

// Writes the name in the file, or else that of this host, into the subfolder of a machine, if it is
// not there. Does nothing on failure.
void nameFolderComputer(const std::filesystem::path& own, const std::filesystem::path& nameFile);

}  // namespace quorvi
