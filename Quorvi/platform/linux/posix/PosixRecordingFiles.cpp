#include "Quorvi/platform/linux/posix/PosixRecordingFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include "Quorvi/platform/linux/posix/Descriptor.h"
#include "Quorvi/platform/linux/posix/LockedRecording.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

namespace fs = std::filesystem;

namespace {

constexpr auto extension = ".m4a";

std::string reason(int error) {
    return std::generic_category().message(error);
}

// Opens the folder itself; never follows a symbolic link.
Descriptor openFolder(const fs::path& folder) {
    return Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

bool isOwn(const Descriptor& folder, struct stat& info) {
    return folder && ::fstat(folder.get(), &info) == 0 && info.st_uid == ::geteuid();
}

class UnnamedFile : public OpenRecording {
public:
    explicit UnnamedFile(int descriptor) : file_(descriptor) {}

    bool isOpen() const { return static_cast<bool>(file_); }

    Bytes read() const override {
        struct stat info{};
        if (::fstat(file_.get(), &info) != 0) fail(errno);
        Bytes bytes(static_cast<std::size_t>(info.st_size));
        std::size_t done = 0;
        while (done < bytes.size()) {
            const auto count = ::pread(file_.get(), bytes.data() + done, bytes.size() - done,
                                       static_cast<off_t>(done));
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) fail(errno);
            if (count == 0) break;
            done += static_cast<std::size_t>(count);
        }
        bytes.resize(done);
        return bytes;
    }

private:
    [[noreturn]] static void fail(int error) {
        throw QuorviError::message(say::recordingNotRead(reason(error)));
    }

    const Descriptor file_;
};

}  // namespace

PosixRecordingFiles::PosixRecordingFiles(fs::path folder, fs::path formerFolder)
    : folder_(std::move(folder)), formerFolder_(std::move(formerFolder)) {}

std::unique_ptr<RecordingInMemory> PosixRecordingFiles::keepInMemory(const Bytes& audio) const {
    return LockedRecording::of(audio);
}

fs::path PosixRecordingFiles::newFile() const {
    return folder_ / (newUuid() + extension);
}

void PosixRecordingFiles::prepare() {
    std::error_code error;
    fs::create_directories(folder_.parent_path(), error);
    int code = error.value();
    if (code == 0 && ::mkdir(folder_.c_str(), S_IRWXU) != 0 && errno != EEXIST) code = errno;
    if (code != 0) throw QuorviError::message(say::recordingFolderNotCreated(reason(code)));

    const auto opened = openFolder(folder_);
    struct stat info{};
    if (!isOwn(opened, info))
        throw QuorviError::message(say::recordingFolderNotOwn(folder_.string()));
    if ((info.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO)) != S_IRWXU &&
        ::fchmod(opened.get(), S_IRWXU) != 0)
        throw QuorviError::message(say::recordingFolderNotPrivate(reason(errno)));
}

std::shared_ptr<const OpenRecording> PosixRecordingFiles::takeOut(const fs::path& file) {
    auto opened = std::make_shared<const UnnamedFile>(
        ::open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    if (!opened->isOpen() || ::unlink(file.c_str()) != 0)
        throw QuorviError::message(say::recordingNotKeptApart(reason(errno)));
    return opened;
}

void PosixRecordingFiles::remove(const fs::path& file) {
    std::error_code ignored;
    fs::remove(file, ignored);
}

void PosixRecordingFiles::removeLeftOver() {
    clear(folder_);
    if (formerFolder_.empty()) return;
    clear(formerFolder_);
    ::rmdir(formerFolder_.c_str());  // fails for a folder of another user or with other files
}

void PosixRecordingFiles::clear(const fs::path& folder) {
    struct stat info{};
    if (!isOwn(openFolder(folder), info)) return;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->path().extension() == extension) fs::remove(entry->path(), ignored);
    }
}

}  // namespace quorvi
