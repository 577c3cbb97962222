#pragma once

#include <filesystem>
#include <string>

#include "QuorviCore/async/Task.h"

namespace quorvi {

// The name and version in a package's description.
struct PackageIdentity {
    std::string name;
    std::string version;
};

// Hands a package to the system's installer, which asks the user, gets the privileges and installs
// it; Quorvi never installs anything itself. Main thread; nothing blocks. Operations throw
// QuorviError.
class UpdateInstaller {
public:
    virtual ~UpdateInstaller() = default;

    // Reads a package's description. Only for files whose signature has been verified.
    virtual Task<PackageIdentity> identify(std::filesystem::path package) = 0;

    // Opens the package in the desktop's package installer and resumes when that has started. The
    // file must stay in place.
    virtual Task<void> open(std::filesystem::path package) = 0;
};

}  // namespace quorvi
