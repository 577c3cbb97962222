#pragma once

#include <filesystem>
#include <string>

#include "QuorviCore/async/Task.h"

namespace quorvi {

// What a package says about itself.
struct PackageIdentity {
    std::string name;
    std::string version;
};

// The system's own way to install a package. Quorvi never installs anything itself: the system's
// installer asks the user, gets the privileges it needs, and does the work. Main thread; what
// blocks runs elsewhere. Throws QuorviError.
class UpdateInstaller {
public:
    virtual ~UpdateInstaller() = default;

    // Reads a package's own description. Only for files whose signature has been verified.
    virtual Task<PackageIdentity> identify(std::filesystem::path package) = 0;

    // Opens the package in the desktop's package installer and resumes when that has been started.
    // The file has to stay where it is.
    virtual Task<void> open(std::filesystem::path package) = 0;
};

}  // namespace quorvi
