#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/platform/Keychain.h"
#include "QuorviCore/async/Executor.h"

namespace quorvi {

// What a database may need; it outlives it.
struct CloudDatabaseEnvironment {
    Scheduler& scheduler;
    Executor& executor;  // for the database alone
    // Makes the keychain of a server's passwords, which a folder has no need of.
    std::function<std::unique_ptr<Keychain>()> makeKeychain;
    std::filesystem::path userData;  // the program's folder for what is the user's
};

// The database at an address, as the preference "cloudDatabase" holds it:
//     folder:/absolute/path             a folder that the user's machines share
//     postgresql://user@host:port/name  a PostgreSQL server
// Without an address it is a folder in the user's data. Connects to nothing yet. Throws
// std::invalid_argument, with a sentence for the user, for an address that makes no sense.
std::unique_ptr<CloudDatabase> openCloudDatabase(const std::string& address,
                                                 const CloudDatabaseEnvironment& environment);

// Why that would be thrown; nothing for an address that can be used.
std::optional<std::string> cloudAddressProblem(const std::string& address);

// Whether the address is one of a server, which may want a password.
bool isServerAddress(const std::string& address);

}  // namespace quorvi
