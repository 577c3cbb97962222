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
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

namespace fs = std::filesystem;

constexpr auto nameFile = "computer";          // in the shared folder
constexpr auto ownNameFile = "computer-name";  // on this computer
constexpr std::size_t longestName = 40;        // in characters

std::string hostName() {
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

// Whether a control character, or a mark of the direction or of the line's end, begins here in
// well-formed UTF-8.
bool isControl(std::string_view rest) {
    const auto byte = [rest](std::size_t at) {
        return static_cast<unsigned char>(at < rest.size() ? rest[at] : 0);
    };
    if (byte(0) < ' ' || byte(0) == 0x7f) return true;
    if (byte(0) == 0xc2) return byte(1) < 0xa0;
    if (byte(0) != 0xe2) return false;
    return (byte(1) == 0x80 &&
            ((byte(2) >= 0x8b && byte(2) <= 0x8f) || (byte(2) >= 0xa8 && byte(2) <= 0xae))) ||
           (byte(1) == 0x81 && byte(2) >= 0xa0 && byte(2) <= 0xaf);
}

// Anybody who shares the folder can have written it, and it is printed on terminals.
std::string printable(std::string_view bytes) {
    const auto name = text::wellFormed(bytes);
    std::string shown;
    for (std::string_view rest = name; !rest.empty();) {
        std::size_t size = 1;
        while (size < rest.size() && (rest[size] & 0xc0) == 0x80) ++size;
        if (!isControl(rest)) shown += rest.substr(0, size);
        rest.remove_prefix(size);
    }
    return std::string(text::firstCharacters(text::trimmed(shown), longestName));
}

std::string nameIn(const fs::path& path) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    std::array<char, 256> bytes{};
    const auto size = file ? ::read(file.get(), bytes.data(), bytes.size()) : 0;
    return printable({bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))});
}

std::optional<FolderComputer> computerIn(const fs::path& folder) {
    const auto id = Uuid::parse(folder.filename().string());
    std::error_code error;
    if (!id || !fs::is_directory(fs::symlink_status(folder, error))) return std::nullopt;
    FolderComputer computer{.id = *id, .name = nameIn(folder / nameFile)};
    for (const auto& one : fs::directory_iterator(folder, error)) {
        struct stat status{};
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

fs::path computerNameFile(const fs::path& machineFile) {
    return machineFile.parent_path() / ownNameFile;
}

void storeComputerName(const fs::path& nameFile, const std::string& name) {
    const auto kept = printable(name);
    const std::string_view part = kept;
    PosixFileStore().replace(nameFile, {&part, 1});
}

void nameFolderComputer(const fs::path& own, const fs::path& chosen) {
    auto name = nameIn(chosen);
    if (name.empty()) name = printable(hostName());
    if (name.empty() || nameIn(own / nameFile) == name) return;
    try {
        const std::string_view part = name;
        PosixFileStore(PosixFileStore::Folder::asItIs).replace(own / nameFile, {&part, 1});
    } catch (const std::exception&) {
        return;  // it has none then
    }
}

}  // namespace quorvi
