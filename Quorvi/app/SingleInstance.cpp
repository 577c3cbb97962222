#include "Quorvi/app/SingleInstance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace quorvi {

namespace {

std::string lockFile() {
    if (const char* folder = std::getenv("XDG_RUNTIME_DIR"); folder && *folder)
        return std::string(folder) + "/quorvi.lock";
    const auto name = "quorvi-" + std::to_string(getuid()) + ".lock";
    return std::filesystem::temp_directory_path() / name;
}

}  // namespace

SingleInstance::SingleInstance()
    : lock_(open(lockFile().c_str(), O_CREAT | O_RDWR | O_CLOEXEC | O_NOFOLLOW, 0600)) {
    // Without a place for the lock there is nothing to tell by; the program runs all the same.
    if (lock_ >= 0 && flock(lock_, LOCK_EX | LOCK_NB) != 0) isFirst_ = errno != EWOULDBLOCK;
}

SingleInstance::~SingleInstance() {
    if (lock_ >= 0) close(lock_);
}

}  // namespace quorvi
