#include "Quorvi/platform/linux/PosixFileStore.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace quorvi {

namespace {

constexpr mode_t folderMode = 0700;
constexpr mode_t fileMode = 0600;
constexpr auto draftMark = ".draft-";

[[noreturn]] void fail(const char* what, const std::filesystem::path& path) {
    throw std::system_error(errno, std::generic_category(), what + (' ' + path.string()));
}

// An open file, closed with the object.
class Descriptor {
public:
    explicit Descriptor(int value) : value_(value) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (value_ >= 0) ::close(value_);
    }
    int get() const { return value_; }

private:
    int value_;
};

// A file with a name of its own that is gone again unless it was given its final name.
class Draft {
public:
    explicit Draft(const std::filesystem::path& beside)
        : path_(beside.string() + draftMark + "XXXXXX") {
        descriptor_ = ::mkostemp(path_.data(), O_CLOEXEC);
        if (descriptor_ < 0) fail("create", path_);
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
        // The disk gets to work while the rest is still being made.
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
    int descriptor_;
    off_t size_ = 0;
    off_t begun_ = 0;  // what the disk has been told to write
};

void makeFolder(const std::filesystem::path& folder) {
    if (::mkdir(folder.c_str(), folderMode) != 0 && errno == ENOENT && folder.has_parent_path() &&
        folder.parent_path() != folder) {
        makeFolder(folder.parent_path());
        if (::mkdir(folder.c_str(), folderMode) != 0 && errno != EEXIST) fail("mkdir", folder);
    }
}

// A second name for the present content, put in the place of an older generation's in one step.
void keepPrevious(const std::filesystem::path& file, const std::filesystem::path& previous) {
    const auto link = previous.string() + ".link";
    ::unlink(link.c_str());
    if (::link(file.c_str(), link.c_str()) != 0) {
        if (errno == ENOENT) return;  // the first generation has no previous one
        fail("link", link);
    }
    if (::rename(link.c_str(), previous.c_str()) != 0) fail("rename", previous);
}

std::filesystem::path resolved(const std::filesystem::path& file) {
    std::error_code error;
    auto target = std::filesystem::canonical(file, error);
    return error ? file : target;
}

// What a program that died while it wrote this file has left. Nobody writes it at the same time.
void removeAbandonedDrafts(const std::filesystem::path& file) {
    const auto prefix = file.filename().string() + draftMark;
    std::error_code ignored;  // they only take up room
    for (const auto& entry : std::filesystem::directory_iterator(file.parent_path(), ignored))
        if (entry.path().filename().string().starts_with(prefix))
            std::filesystem::remove(entry.path(), ignored);
}

// `write` is given the new file, and writes its content.
template <class Write>
void replaceFile(const std::filesystem::path& name, const std::filesystem::path& previous,
                 Write write) {
    const auto file = resolved(name);
    const auto folder = file.parent_path();
    makeFolder(folder);
    const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.get() < 0) fail("open", folder);
    if (::fchmod(directory.get(), folderMode) != 0) fail("chmod", folder);

    removeAbandonedDrafts(file);
    Draft draft(file);
    write(draft);
    draft.sync();
    if (!previous.empty()) keepPrevious(file, folder / previous.filename());
    draft.moveTo(file);
    if (::fsync(directory.get()) != 0) fail("fsync", folder);
}

}  // namespace

std::optional<std::string> PosixFileStore::read(const std::filesystem::path& file) {
    const Descriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (descriptor.get() < 0) {
        if (errno == ENOENT) return std::nullopt;
        fail("open", file);
    }
    struct stat status {};
    if (::fstat(descriptor.get(), &status) != 0) fail("stat", file);
    // A little more, so that the end is found without another copy.
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

void PosixFileStore::replace(const std::filesystem::path& file,
                             std::span<const std::string_view> parts,
                             const std::filesystem::path& previous) {
    replaceFile(file, previous, [&](Draft& draft) {
        for (const auto part : parts) draft.write(part);
    });
}

void PosixFileStore::replaceInPieces(const std::filesystem::path& file,
                                     const std::function<std::string_view()>& next) {
    replaceFile(file, {}, [&](Draft& draft) {
        for (auto piece = next(); !piece.empty(); piece = next()) draft.write(piece);
    });
}

}  // namespace quorvi
