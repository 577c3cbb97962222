#include "Quorvi/platform/linux/xdg/UserFolders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace quorvi {

namespace {

constexpr auto folderName = "Quorvi";
constexpr auto recordingsName = "VeskRecordings";

// Returns the folder in the variable; empty if it is unset or relative.
std::filesystem::path variable(const char* name) {
    const char* value = std::getenv(name);
    std::filesystem::path folder = value ? value : "";
    return folder.is_absolute() ? folder : std::filesystem::path{};
}

std::filesystem::path home() {
    if (auto folder = variable("HOME"); !folder.empty()) return folder;
    const passwd* account = ::getpwuid(::getuid());
    if (!account || !account->pw_dir || *account->pw_dir != '/')
        throw std::runtime_error("The user has no home folder.");
    return account->pw_dir;
}

std::filesystem::path folder(const char* name, const char* standard) {
    auto base = variable(name);
    if (base.empty()) base = home() / standard;
    return base / folderName;
}

// After sudo the variable may name another user's folder.
bool isOwnFolder(const std::filesystem::path& folder) {
    struct stat info{};
    return !folder.empty() && ::stat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode) &&
           info.st_uid == ::geteuid();
}

std::filesystem::path recordingsFolder() {
    const auto runtime = variable("XDG_RUNTIME_DIR");
    return (isOwnFolder(runtime) ? runtime : folder("XDG_CACHE_HOME", ".cache")) / recordingsName;
}

}  // namespace

UserFolders UserFolders::find() {
    return {.data = folder("XDG_DATA_HOME", ".local/share"),
            .config = folder("XDG_CONFIG_HOME", ".config"),
            .recordings = recordingsFolder()};
}

}  // namespace quorvi
