#include "Quorvi/app/composition/CloudDatabases.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>

#include "Quorvi/app/composition/CloudPassword.h"
#include "Quorvi/platform/linux/folder/FolderCloudDatabase.h"
#include "Quorvi/platform/linux/postgres/PostgresCloudDatabase.h"
#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

// In the user's data, and never inside the shared folder.
constexpr auto deviceFile = "cloud-device";
constexpr auto standardFolder = "cloud";

constexpr std::string_view folderScheme = "folder:";
constexpr std::array<std::string_view, 2> serverSchemes{"postgresql://", "postgres://"};

}  // namespace

std::filesystem::path cloudFolder(const std::string& address) {
    return std::filesystem::path(address.substr(folderScheme.size())).lexically_normal();
}

std::filesystem::path cloudDeviceFile(const std::filesystem::path& userData) {
    return userData / deviceFile;
}

bool isServerAddress(const std::string& address) {
    return std::ranges::any_of(serverSchemes,
                               [&](const auto scheme) { return address.starts_with(scheme); });
}

std::optional<Message> cloudAddressProblem(const std::string& address) {
    if (address.empty()) return std::nullopt;
    if (isServerAddress(address)) return PostgresCloudDatabase::refusal(address);
    if (!address.starts_with(folderScheme)) return say::cloudAddressUnknown(address);
    if (!cloudFolder(address).is_absolute()) return say::cloudAddressNotAbsolute(address);
    return std::nullopt;
}

std::unique_ptr<CloudDatabase> openCloudDatabase(const std::string& address,
                                                 const CloudDatabaseEnvironment& environment) {
    if (const auto problem = cloudAddressProblem(address)) throw QuorviError::message(*problem);
    if (isServerAddress(address))
        return std::make_unique<PostgresCloudDatabase>(
            environment.scheduler, address, cloudPassword(environment.makeKeychain(), address),
            PostgresTimes(), environment.end);
    const auto folder =
        address.empty() ? environment.userData / standardFolder : cloudFolder(address);
    return std::make_unique<FolderCloudDatabase>(
        environment.scheduler, environment.executor,
        FolderCloudDatabase::Place{folder, cloudDeviceFile(environment.userData),
                                   !address.empty()});
}

void removeUnusedCloud(const std::string& address, const std::filesystem::path& userData) {
    if (address.empty() || cloudAddressProblem(address)) return;
    std::error_code error;
    const auto unused = userData / standardFolder;
    if (!isServerAddress(address)) {
        const auto used = std::filesystem::weakly_canonical(cloudFolder(address), error);
        const auto whole = std::filesystem::weakly_canonical(unused, error);
        const auto differ = std::ranges::mismatch(whole, used);
        if (error || differ.in1 == whole.end()) return;
    }
    std::filesystem::remove_all(unused, error);
}

}  // namespace quorvi
