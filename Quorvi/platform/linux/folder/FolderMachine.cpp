#include "Quorvi/platform/linux/folder/FolderMachine.h"

#include <cerrno>
#include <charconv>
#include <map>
#include <sstream>
#include <string_view>
#include <system_error>

#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "QuorviCore/checksum/Crc32c.h"

namespace quorvi {

namespace {

constexpr auto mark = "Quorvi cloud folder 1";
constexpr int programsAtOnce = 16;

// Distinguishes this computer from one with a copy of its files.
std::string computer() {
    const auto id = PosixFileStore().read("/etc/machine-id");
    return std::to_string(crc32c(id.value_or("")));
}

// Lines of a name, a space and a value.
std::map<std::string, std::string> read(const std::filesystem::path& file) {
    std::map<std::string, std::string> values;
    std::istringstream lines(PosixFileStore().read(file).value_or(""));
    std::string line;
    if (!std::getline(lines, line) || line != mark) return values;
    while (std::getline(lines, line))
        if (const auto space = line.find(' '); space != line.npos)
            values.emplace(line.substr(0, space), line.substr(space + 1));
    return values;
}

// Several programs of one computer have a file each.
std::filesystem::path fileOf(std::filesystem::path file, int program) {
    if (program > 1) file += "-" + std::to_string(program);
    return file;
}

}  // namespace

std::vector<Uuid> FolderMachine::idsIn(const std::filesystem::path& file) {
    std::vector<Uuid> ids;
    for (int program = 1; program <= programsAtOnce; ++program)
        if (const auto id = Uuid::parse(read(fileOf(file, program))["machine"])) ids.push_back(*id);
    return ids;
}

FolderMachine::FolderMachine(const std::filesystem::path& file) {
    for (int program = 1; !lock_; ++program) {
        file_ = fileOf(file, program);
        auto lock = file_;
        lock += ".lock";
        try {
            lock_ = std::make_unique<FileLock>(lock, Duration::zero());
        } catch (const std::system_error& error) {
            if (error.code().value() != EWOULDBLOCK || program == programsAtOnce) throw;
        }
    }
    auto values = read(file_);
    const auto known = Uuid::parse(values["machine"]);
    if (!known || values["computer"] != computer()) {
        renew();
        return;
    }
    id = *known;
    folder = values["folder"];
    owner = values["owner"];
    const auto& number = values["reserved"];
    std::from_chars(number.data(), number.data() + number.size(), reserved);
}

void FolderMachine::renew() {
    id = Uuid::random();
    folder.clear();
    owner.clear();
    reserved = 0;
}

void FolderMachine::save() {
    const auto content = std::string(mark) + "\ncomputer " + computer() + "\nmachine " +
                         id.string() + "\nfolder " + folder + "\nowner " + owner + "\nreserved " +
                         std::to_string(reserved) + "\n";
    const std::string_view part = content;
    PosixFileStore(PosixFileStore::Folder::asItIs).replace(file_, {&part, 1});
}

}  // namespace quorvi
