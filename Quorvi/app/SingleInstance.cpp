#include "Quorvi/app/SingleInstance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

namespace quorvi {

namespace {

std::string lockFile() {
    if (const char* folder = std::getenv("XDG_RUNTIME_DIR"); folder && *folder)
        return std::string(folder) + "/quorvi.lock";
    const auto name = "quorvi-" + std::to_string(getuid()) + ".lock";
    return std::filesystem::temp_directory_path() / name;
}

}  // namespace

// A record lock is this process's alone. One of flock() would be the files', and when a program is
// killed while it starts another, that one has its files open until it has become itself.
SingleInstance::SingleInstance()
    : lock_(open(lockFile().c_str(), O_CREAT | O_RDWR | O_CLOEXEC | O_NOFOLLOW, 0600)) {
    // Without a place for the lock there is nothing to tell by; the program runs all the same.
    if (lock_ < 0) return;
    struct flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    isFirst_ = fcntl(lock_, F_SETLK, &whole) == 0 || (errno != EACCES && errno != EAGAIN);
    if (isFirst_) waitForRemains();
}

// The locks of a killed run's files may be held for a moment yet in that way, this one's like all.
void SingleInstance::waitForRemains() const {
    constexpr int tries = 400;
    for (int i = 0; i < tries && flock(lock_, LOCK_EX | LOCK_NB) != 0; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

SingleInstance::~SingleInstance() {
    if (lock_ >= 0) close(lock_);
}

}  // namespace quorvi
