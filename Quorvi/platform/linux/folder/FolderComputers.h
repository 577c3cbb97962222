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
    std::string name;  // of its host; empty if it is not known
    std::time_t lastChange = 0;
    std::uint64_t bytes = 0;  // of its files
};

// Returns the machines of a folder, the last active first; none if there is no such folder.
std::vector<FolderComputer> folderComputers(const std::filesystem::path& folder);

// Writes the name of this host into the subfolder of a machine, if it is not there. Does nothing on
// failure.
void nameFolderComputer(const std::filesystem::path& own);

}  // namespace quorvi
