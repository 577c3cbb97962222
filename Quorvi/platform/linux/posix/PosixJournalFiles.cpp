#include "Quorvi/platform/linux/posix/PosixJournalFiles.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "Quorvi/platform/linux/posix/Descriptor.h"
#include "Quorvi/platform/linux/posix/PrivateFolder.h"

namespace quorvi {

namespace {

[[noreturn]] void fail(int error, const char* what, const std::filesystem::path& path) {
    throw std::system_error(error, std::generic_category(), what + (' ' + path.string()));
}

class PosixJournalFile final : public JournalFile {
public:
    explicit PosixJournalFile(const std::filesystem::path& path)
        : path_(path),
          file_(::open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW, 0600)) {
        if (!file_) fail(errno, "open", path_);
        struct stat status{};
        if (::fstat(file_.get(), &status) != 0) fail(errno, "stat", path_);
        if (!S_ISREG(status.st_mode)) fail(EINVAL, "open", path_);
        // On a file system without locks other processes cannot be excluded.
        if (::flock(file_.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
            fail(EAGAIN, "lock", path_);
        // Without a durable directory entry the appended data would be lost with the file.
        const Descriptor folder(
            ::open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder) ::fsync(folder.get());
    }

    std::string read() override {
        struct stat status{};
        if (::fstat(file_.get(), &status) != 0) fail(errno, "stat", path_);
        std::string content(static_cast<std::size_t>(status.st_size), '\0');
        std::size_t size = 0;
        while (size < content.size()) {
            const auto got = ::pread(file_.get(), content.data() + size, content.size() - size,
                                     static_cast<off_t>(size));
            if (got < 0 && errno == EINTR) continue;
            if (got < 0) fail(errno, "read", path_);
            if (got == 0) break;
            size += static_cast<std::size_t>(got);
        }
        content.resize(size);
        return content;
    }

    void truncate(std::uint64_t size) override {
        if (::ftruncate(file_.get(), static_cast<off_t>(size)) != 0) fail(errno, "truncate", path_);
        if (::fdatasync(file_.get()) != 0) fail(errno, "fdatasync", path_);
    }

    void append(std::string_view bytes) override {
        while (!bytes.empty()) {
            const auto written = ::write(file_.get(), bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) fail(errno, "write", path_);
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        if (::fdatasync(file_.get()) != 0) fail(errno, "fdatasync", path_);
    }

private:
    const std::filesystem::path path_;
    const Descriptor file_;
};

}  // namespace

std::unique_ptr<JournalFile> PosixJournalFiles::open(const std::filesystem::path& file) {
    makePrivateFolder(file.parent_path());
    return std::make_unique<PosixJournalFile>(file);
}

}  // namespace quorvi
