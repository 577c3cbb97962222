#include "Quorvi/platform/linux/posix/PrivateFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "Quorvi/platform/linux/posix/Descriptor.h"

namespace quorvi {

namespace {

// Best effort: a folder that may be written but not read can't be opened for this.
void sync(const std::filesystem::path& folder) {
    const Descriptor opened(
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened) ::fsync(opened.get());
}

}  // namespace

void makePrivateFolder(const std::filesystem::path& folder) {
    std::error_code unknown;
    if (folder.empty() || std::filesystem::is_directory(folder, unknown)) return;
    makePrivateFolder(folder.parent_path());
    if (::mkdir(folder.c_str(), 0700) == 0)
        sync(folder.parent_path());
    else if (errno != EEXIST)
        throw std::system_error(errno, std::generic_category(), "mkdir " + folder.string());
}

}  // namespace quorvi
