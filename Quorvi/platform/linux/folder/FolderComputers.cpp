#include "Quorvi/platform/linux/folder/FolderComputers.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <exception>
#include <optional>
#include <string_view>
#include <system_error>

#include "Quorvi/platform/linux/posix/Descriptor.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"

namespace quorvi {

namespace {

namespace fs = std::filesystem;

constexpr auto nameFile = "computer";

std::string hostName() {
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

// Anybody who shares the folder can have written it, and it is printed on terminals.
std::string nameIn(const fs::path& folder) {
    const Descriptor file(
        ::open((folder / nameFile).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    std::array<char, 64> bytes{};
    const auto size = file ? ::read(file.get(), bytes.data(), bytes.size()) : 0;
    std::string name(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    std::erase_if(name, [](char c) { return c <= ' ' || c > '~'; });
    return name;
}

std::optional<FolderComputer> computerIn(const fs::path& folder) {
    const auto id = Uuid::parse(folder.filename().string());
    std::error_code error;
    if (!id || !fs::is_directory(fs::symlink_status(folder, error))) return std::nullopt;
    FolderComputer computer{.id = *id, .name = nameIn(folder)};
    for (const auto& one : fs::directory_iterator(folder, error)) {
        struct stat status {};
        if (::lstat(one.path().c_str(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
        computer.lastChange = std::max(computer.lastChange, status.st_mtime);
        computer.bytes += static_cast<std::uint64_t>(status.st_size);
    }
    return computer;
}

}  // namespace

std::vector<FolderComputer> folderComputers(const fs::path& folder) {
    std::vector<FolderComputer> computers;
    std::error_code error;
    for (const auto& one : fs::directory_iterator(folder, error))
        if (auto computer = computerIn(one.path())) computers.push_back(*std::move(computer));
    std::ranges::sort(computers, std::ranges::greater(), &FolderComputer::lastChange);
    return computers;
}

void nameFolderComputer(const fs::path& own) {
    const auto name = hostName();
    if (name.empty() || nameIn(own) == name) return;
    try {
        const std::string_view part = name;
        PosixFileStore(PosixFileStore::Folder::asItIs).replace(own / nameFile, {&part, 1});
    } catch (const std::exception&) {
        return;  // it has none then
    }
}

}  // namespace quorvi
