#include "Quorvi/platform/linux/folder/FolderWriter.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "Quorvi/platform/linux/folder/FolderError.h"
#include "Quorvi/platform/linux/folder/FolderSegments.h"

namespace quorvi {

namespace {

void writeAll(int file, std::string_view bytes, const std::filesystem::path& path) {
    while (!bytes.empty()) {
        const auto written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) failFolder("write", path);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

}  // namespace

FolderWriter::FolderWriter(std::filesystem::path folder, const Uuid& machine, std::uint32_t next,
                           std::uint64_t segmentSize)
    : folder_(std::move(folder)),
      opened_(::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)),
      machine_(machine),
      segmentSize_(segmentSize),
      next_(next) {
    if (!opened_) failFolder("open", folder_);
}

void FolderWriter::syncFolder() const {
    // Some network file systems do not support fsync of a folder.
    if (::fsync(opened_.get()) != 0 && errno != EINVAL) failFolder("fsync", folder_);
}

std::filesystem::path FolderWriter::lastSegment() const {
    return folder_ / folderSegmentName(next_ - 1);
}

void FolderWriter::begin(std::uint64_t start) {
    // The names of the next ones may be taken, by anything.
    int file = -1;
    for (int tries = 0; file < 0 && tries < 1000 && next_ <= largestSegmentNumber;
         ++tries, ++next_) {
        file = ::openat(opened_.get(), folderSegmentName(next_).c_str(),
                        O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC, 0600);
        if (file < 0 && errno != EEXIST) break;
    }
    if (file < 0) failFolder("create", folder_ / folderSegmentName(next_));
    const auto path = lastSegment();
    file_ = std::make_unique<Descriptor>(file);
    std::string head;
    folderlog::appendHead(head, machine_, start);
    writeAll(file_->get(), head, path);
    size_ = head.size();
    syncFolder();
}

FolderWriter::Position FolderWriter::append(std::string_view entries, std::uint64_t start) {
    const auto failed = [this] {
        // Nothing may be appended after an entry that may be torn.
        if (file_ && *file_ && ::ftruncate(file_->get(), static_cast<off_t>(size_)) != 0)
            errno = 0;  // readers skip the torn entry
        file_.reset();
    };
    if (size_ + entries.size() > segmentSize_) finishSegment();
    try {
        if (!file_) begin(start);
        isSynced_ = false;
        writeAll(file_->get(), entries, lastSegment());
    } catch (const CloudError&) {
        failed();
        throw;
    }
    const Position position{next_ - 1, size_};
    size_ += entries.size();
    return position;
}

void FolderWriter::sync() {
    if (!file_ || isSynced_) return;
    if (::fdatasync(file_->get()) != 0) {
        const auto error = folderError(errno, "fdatasync", lastSegment());
        file_.reset();  // its content is uncertain
        throw error;
    }
    isSynced_ = true;
}

void FolderWriter::finishSegment() {
    sync();
    file_.reset();
}

void FolderWriter::remove(const std::vector<std::uint32_t>& segments) {
    for (const auto number : segments)
        ::unlinkat(opened_.get(), folderSegmentName(number).c_str(), 0);
    syncFolder();
}

}  // namespace quorvi
