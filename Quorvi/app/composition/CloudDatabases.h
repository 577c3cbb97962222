#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/platform/Keychain.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// Everything a database may need; outlives it.
struct CloudDatabaseEnvironment {
    Scheduler& scheduler;
    Executor& executor;  // used by databases in folders only
    // Creates the keychain with a server's password; not called for a folder.
    std::function<std::unique_ptr<Keychain>()> makeKeychain;
    std::filesystem::path userData;  // the program's folder for user data
    Executor* end = nullptr;         // where the end of a server's connection is awaited, if given
};

// The database at an address, as the preference "cloudDatabase" holds it:
//     folder:/absolute/path             a folder that the user's machines share
//     postgresql://user@host:port/name  a PostgreSQL server
// An empty address means a folder in the user's data. Does not connect yet. Throws
// QuorviError for an invalid address.
std::unique_ptr<CloudDatabase> openCloudDatabase(const std::string& address,
                                                 const CloudDatabaseEnvironment& environment);

// Removes the folder in the user's data if the cloud at this address is another one: it would keep
// copies of what is deleted later. Blocks; does nothing on failure.
void removeUnusedCloud(const std::string& address, const std::filesystem::path& userData);

// The folder of a folder's address, and the file with the identity of this computer in it.
std::filesystem::path cloudFolder(const std::string& address);
std::filesystem::path cloudDeviceFile(const std::filesystem::path& userData);

// Returns the sentence that openCloudDatabase() would throw; nullopt for a valid address.
std::optional<Message> cloudAddressProblem(const std::string& address);

// Whether the address is that of a server, which may need a password.
bool isServerAddress(const std::string& address);

}  // namespace quorvi
