#include "Quorvi/platform/linux/posix/Sandbox.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string_view>

namespace quorvi {
namespace {

constexpr std::size_t infoLimit = 64 * 1024;

std::string pathOf(pid_t pid, const char* name) {
    return "/proc/" + std::to_string(pid) + name;
}

// The beginning of a regular file; the sandbox chose what is there.
std::string beginningOf(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    if (file < 0) return {};
    using Status = struct stat;
    Status status{};
    std::string text;
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        text.resize(infoLimit);
        const auto size = read(file, text.data(), text.size());
        text.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    }
    close(file);
    return text;
}

}  // namespace

std::optional<std::string> sandboxOf(pid_t pid) {
    using Status = struct stat;
    Status own{}, its{};
    if (stat(pathOf(getpid(), "/ns/mnt").c_str(), &own) == 0 &&
        stat(pathOf(pid, "/ns/mnt").c_str(), &its) == 0 && own.st_ino == its.st_ino)
        return std::nullopt;
    const auto info = "\n" + beginningOf(pathOf(pid, "/root") + "/.flatpak-info");
    constexpr std::string_view key = "\ninstance-id=";
    const auto found = info.find(key);
    if (found == std::string::npos) return std::string();
    const auto begin = found + key.size();
    return info.substr(begin, info.find('\n', begin) - begin);
}

}  // namespace quorvi
