#include "Quorvi/app/CloudDatabases.h"

#include <array>
#include <stdexcept>
#include <string_view>

#include "Quorvi/platform/linux/FolderCloudDatabase.h"

namespace quorvi {

namespace {

using Open = std::unique_ptr<CloudDatabase> (*)(const std::string& address,
                                                const CloudDatabaseEnvironment& environment);

// In the user's data, and never inside the shared folder.
constexpr auto deviceFile = "cloud-device";
constexpr auto standardFolder = "cloud";
constexpr std::string_view folderScheme = "folder:";

std::unique_ptr<CloudDatabase> inFolder(const std::filesystem::path& folder,
                                        const CloudDatabaseEnvironment& environment) {
    return std::make_unique<FolderCloudDatabase>(
        environment.scheduler, environment.executor,
        FolderCloudDatabase::Place{folder, environment.userData / deviceFile});
}

std::unique_ptr<CloudDatabase> openFolder(const std::string& address,
                                          const CloudDatabaseEnvironment& environment) {
    const std::filesystem::path folder = address.substr(folderScheme.size());
    if (!folder.is_absolute())
        throw std::invalid_argument("cloudDatabase: " + address + " has no absolute path");
    return inFolder(folder.lexically_normal(), environment);
}

// By what their addresses begin with.
constexpr std::array<std::pair<std::string_view, Open>, 1> databases{{
    {folderScheme, openFolder},
}};

}  // namespace

std::unique_ptr<CloudDatabase> openCloudDatabase(const std::string& address,
                                                 const CloudDatabaseEnvironment& environment) {
    if (address.empty()) return inFolder(environment.userData / standardFolder, environment);
    for (const auto& [scheme, open] : databases)
        if (address.starts_with(scheme)) return open(address, environment);
    throw std::invalid_argument("cloudDatabase: " + address + " is no address that is known");
}

}  // namespace quorvi
