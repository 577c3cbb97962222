#include "Quorvi/shell/SingleInstance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <thread>

#include "Quorvi/platform/linux/posix/PrivateFolder.h"
#include "Quorvi/platform/linux/xdg/UserFolders.h"

namespace quorvi {

namespace {

int open(const std::filesystem::path& file) {
    return ::open(file.c_str(), O_CREAT | O_RDWR | O_CLOEXEC | O_NOFOLLOW, 0600);
}

std::filesystem::path sessionLock() {
    if (const char* folder = std::getenv("XDG_RUNTIME_DIR"); folder && *folder)
        return std::filesystem::path(folder) / "quorvi.lock";
    return std::filesystem::temp_directory_path() /
           ("quorvi-" + std::to_string(getuid()) + ".lock");
}

int openDataLock() {
    try {
        const auto folder = UserFolders::find().data;
        makePrivateFolder(folder);
        return open(folder / "running.lock");
    } catch (const std::exception&) {
        return -1;
    }
}

// A record lock (fcntl) belongs to this process alone. A flock() lock would be inherited by a child
// between fork and exec and so survive if this process is killed then. If the file can't be opened,
// the program runs without the lock.
bool isTaken(const Descriptor& file) {
    struct flock whole{};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    return file && fcntl(file.get(), F_SETLK, &whole) != 0 && (errno == EACCES || errno == EAGAIN);
}

}  // namespace

SingleInstance::SingleInstance() : inSession_(open(sessionLock())), inData_(openDataLock()) {
    if (isTaken(inSession_))
        rival_ = "Quorvi is running already.";
    else if (isTaken(inData_))
        rival_ =
            "Quorvi is running already, in another session or on another computer, with the same "
            "home folder.";
    else
        waitForRemains();
}

// A killed run's flock() locks may be held by its child for a moment.
void SingleInstance::waitForRemains() const {
    constexpr int tries = 400;
    for (int i = 0; inSession_ && i < tries && flock(inSession_.get(), LOCK_EX | LOCK_NB) != 0; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

}  // namespace quorvi
