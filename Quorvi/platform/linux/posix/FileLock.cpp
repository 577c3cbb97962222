#include "Quorvi/platform/linux/posix/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <thread>

#include "Quorvi/platform/linux/posix/PrivateFolder.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// flock() waits without a limit or not at all, and nothing tells when a lock becomes free.
constexpr auto pauseBetweenTries = 5ms;

[[noreturn]] void fail(int error, const std::filesystem::path& file) {
    throw std::system_error(error, std::generic_category(), "lock " + file.string());
}

int open(const std::filesystem::path& file) {
    makePrivateFolder(file.parent_path());
    return ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
}

}  // namespace

FileLock::FileLock(const std::filesystem::path& file, Duration patience) : descriptor_(open(file)) {
    if (!descriptor_) fail(errno, file);
    const auto latest = std::chrono::steady_clock::now() + patience;
    while (::flock(descriptor_.get(), LOCK_EX | LOCK_NB) != 0) {
        const int error = errno;
        if (error == EINTR) continue;
        if (error != EWOULDBLOCK || std::chrono::steady_clock::now() >= latest) fail(error, file);
        std::this_thread::sleep_for(pauseBetweenTries);
    }
}

}  // namespace quorvi
