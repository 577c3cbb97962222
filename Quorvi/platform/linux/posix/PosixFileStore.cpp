#include "Quorvi/platform/linux/posix/PosixFileStore.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

#include "Quorvi/platform/linux/posix/Descriptor.h"
#include "Quorvi/platform/linux/posix/PrivateFolder.h"

namespace quorvi {

namespace {

constexpr mode_t folderMode = 0700;
constexpr mode_t fileMode = 0600;

[[noreturn]] void fail(const char* what, const std::filesystem::path& path) {
    throw std::system_error(errno, std::generic_category(), what + (' ' + path.string()));
}

// Prefix of draft names.
std::string draftPrefix(const std::filesystem::path& file) {
    return "." + file.filename().string() + ".draft-";
}

bool lock(int descriptor) {
    return ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
}

bool hasName(int descriptor) {
    struct stat status{};
    return ::fstat(descriptor, &status) == 0 && status.st_nlink > 0;
}

// A file with a name of its own that is gone again unless it was given its final name. Its lock
// tells others that somebody is still writing it.
class Draft {
public:
    explicit Draft(const std::filesystem::path& file)
        : path_(file.parent_path() / (draftPrefix(file) + "XXXXXX")) {
        const auto pattern = path_;
        for (;;) {
            descriptor_ = ::mkostemp(path_.data(), O_CLOEXEC);
            if (descriptor_ < 0) fail("create", path_);
            // On a file system without locks nobody sweeps.
            const bool isOurs = lock(descriptor_) || errno != EWOULDBLOCK;
            if (isOurs && hasName(descriptor_)) break;
            // Another process is sweeping, and has removed it or is about to.
            ::close(descriptor_);
            path_ = pattern;
        }
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;
    ~Draft() {
        ::close(descriptor_);
        if (!path_.empty()) ::unlink(path_.c_str());
    }

    void write(std::string_view bytes) {
        while (!bytes.empty()) {
            const auto written = ::write(descriptor_, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) fail("write", path_);
            bytes.remove_prefix(static_cast<std::size_t>(written));
            size_ += written;
        }
        // Start writing back while the rest is still being produced.
        if (size_ - begun_ < writeAhead) return;
        ::sync_file_range(descriptor_, begun_, size_ - begun_, SYNC_FILE_RANGE_WRITE);
        begun_ = size_;
    }
    void sync() {
        if (::fchmod(descriptor_, fileMode) != 0) fail("chmod", path_);
        if (::fsync(descriptor_) != 0) fail("fsync", path_);
    }
    void moveTo(const std::filesystem::path& file) {
        if (::rename(path_.c_str(), file.c_str()) != 0) fail("rename", file);
        path_.clear();
    }

private:
    static constexpr off_t writeAhead = 8 << 20;

    std::string path_;
    int descriptor_ = -1;
    off_t size_ = 0;
    off_t begun_ = 0;  // what the disk has been told to write
};

// A hard link to the present content, renamed over the older generation. A
// file system without hard links gets a copy.
void keepPrevious(const std::filesystem::path& file, const std::filesystem::path& previous,
                  PosixFileStore& store) {
    const auto link = previous.string() + ".link";
    ::unlink(link.c_str());
    if (::link(file.c_str(), link.c_str()) != 0) {
        if (errno == ENOENT) return;  // the first generation has no previous one
        if (errno != EPERM && errno != EOPNOTSUPP && errno != EMLINK) fail("link", link);
        Draft copy(previous);
        copy.write(store.read(file).value_or(""));
        copy.sync();
        copy.moveTo(previous);
        return;
    }
    if (::rename(link.c_str(), previous.c_str()) != 0) fail("rename", previous);
    ::unlink(link.c_str());  // still there when both were names of one file
}

// Removes drafts of processes that died while writing.
void sweepDrafts(const std::filesystem::path& file) {
    const auto prefix = draftPrefix(file);
    std::error_code error;
    auto entry = std::filesystem::directory_iterator(file.parent_path(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const auto& path = entry->path();
        if (!path.filename().string().starts_with(prefix)) continue;
        const Descriptor draft(
            ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
        if (draft && lock(draft.get())) ::unlink(path.c_str());
    }
}

void refuseUnlessRegular(const std::filesystem::path& file) {
    struct stat status{};
    if (::lstat(file.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
        throw std::system_error(std::make_error_code(std::errc::invalid_argument), file.string());
}

std::filesystem::path resolved(const std::filesystem::path& file) {
    std::error_code error;
    auto target = std::filesystem::canonical(file, error);
    return error ? file : target;
}

}  // namespace

std::optional<std::string> PosixFileStore::read(const std::filesystem::path& file) {
    // A named pipe would block open() for ever.
    const Descriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!descriptor) {
        if (errno == ENOENT) return std::nullopt;
        fail("open", file);
    }
    struct stat status{};
    if (::fstat(descriptor.get(), &status) != 0) fail("stat", file);
    if (!S_ISREG(status.st_mode))
        throw std::system_error(std::make_error_code(std::errc::invalid_argument), file.string());
    // One byte more, so that the end is found without another copy.
    std::string content(static_cast<std::size_t>(status.st_size) + 64, '\0');
    std::size_t size = 0;
    for (;;) {
        if (size == content.size()) content.resize(size + 4096);
        const auto got = ::read(descriptor.get(), content.data() + size, content.size() - size);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) fail("read", file);
        if (got == 0) break;
        size += static_cast<std::size_t>(got);
    }
    content.resize(size);
    return content;
}

// `write` writes the content into the new file.
template <class Write>
void PosixFileStore::replaceWith(const std::filesystem::path& name,
                                 const std::filesystem::path& previous, Write write) {
    const bool isNamed = folder_ == Folder::named;
    const auto file = isNamed ? name : resolved(name);
    const auto folder = file.parent_path();
    if (isNamed)
        refuseUnlessRegular(file);
    else
        makePrivateFolder(folder);
    const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!directory) fail("open", folder);
    if (folder_ == Folder::ofTheUserAlone && ::fchmod(directory.get(), folderMode) != 0)
        fail("chmod", folder);

    sweepDrafts(file);
    Draft draft(file);
    write(draft);
    draft.sync();
    if (!previous.empty()) keepPrevious(file, folder / previous.filename(), *this);
    draft.moveTo(file);
    if (::fsync(directory.get()) != 0) fail("fsync", folder);
}

void PosixFileStore::replace(const std::filesystem::path& file,
                             std::span<const std::string_view> parts,
                             const std::filesystem::path& previous) {
    replaceWith(file, previous, [&](Draft& draft) {
        for (const auto part : parts) draft.write(part);
    });
}

void PosixFileStore::replaceInPieces(const std::filesystem::path& file,
                                     const std::function<std::string_view()>& next) {
    replaceWith(file, {}, [&](Draft& draft) {
        for (auto piece = next(); !piece.empty(); piece = next()) draft.write(piece);
    });
}

}  // namespace quorvi
