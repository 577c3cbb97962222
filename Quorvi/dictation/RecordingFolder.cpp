#include "Quorvi/dictation/RecordingFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "QuorviCore/Error.h"

namespace quorvi::recordings {

namespace fs = std::filesystem;

namespace {

QuorviError failure(const std::string& what, int error) {
    return QuorviError::message(what + ": " + std::generic_category().message(error) + ".");
}

// The folder itself, never what a link of that name leads to.
Descriptor openFolder(const fs::path& folder) {
    return Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

bool isOwn(const Descriptor& folder, struct stat& info) {
    return folder && ::fstat(folder.get(), &info) == 0 && info.st_uid == ::geteuid();
}

}  // namespace

void prepareFolder(const fs::path& folder) {
    const std::string what = "The folder for recordings could not be created";
    std::error_code error;
    fs::create_directories(folder.parent_path(), error);
    if (error) throw failure(what, error.value());
    if (::mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) throw failure(what, errno);

    const auto opened = openFolder(folder);
    struct stat info {};
    if (!isOwn(opened, info))
        throw QuorviError::message("The folder for recordings, " + folder.string() +
                                   ", is not a folder of your own. Remove it and try again.");
    if ((info.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO)) != S_IRWXU &&
        ::fchmod(opened.get(), S_IRWXU) != 0)
        throw failure("The folder for recordings could not be made private", errno);
}

std::shared_ptr<const Descriptor> takeOut(const fs::path& file) {
    auto opened =
        std::make_shared<const Descriptor>(::open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    if (!*opened || ::unlink(file.c_str()) != 0)
        throw failure("The recording could not be kept apart", errno);
    return opened;
}

Bytes read(const Descriptor& file) {
    const std::string what = "The recording could not be read";
    struct stat info {};
    if (::fstat(file.get(), &info) != 0) throw failure(what, errno);
    Bytes bytes(static_cast<std::size_t>(info.st_size));
    std::size_t done = 0;
    while (done < bytes.size()) {
        const auto count =
            ::pread(file.get(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw failure(what, errno);
        if (count == 0) break;
        done += static_cast<std::size_t>(count);
    }
    bytes.resize(done);
    return bytes;
}

void removeAll(const fs::path& folder) {
    struct stat info {};
    if (!isOwn(openFolder(folder), info)) return;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->path().extension() == ".m4a") fs::remove(entry->path(), ignored);
    }
}

}  // namespace quorvi::recordings
