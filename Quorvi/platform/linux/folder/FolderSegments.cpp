#include "Quorvi/platform/linux/folder/FolderSegments.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <functional>
#include <memory>
#include <utility>

#include "Quorvi/platform/linux/folder/FolderError.h"

namespace quorvi {

using namespace folderlog;

namespace {

constexpr std::string_view extension = ".log";
constexpr std::size_t digits = 8;
constexpr std::size_t readAhead = 1 << 20;

// Calls `visit` with each name in the folder; returns false if it cannot be opened. `flags` as for
// open().
bool forEachName(const std::filesystem::path& folder, int flags,
                 const std::function<void(const char*)>& visit) {
    const int file = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | flags);
    if (file < 0) return false;
    const std::unique_ptr<DIR, int (*)(DIR*)> opened(::fdopendir(file), ::closedir);
    if (!opened) {
        ::close(file);
        return false;
    }
    while (const dirent* one = ::readdir(opened.get())) visit(one->d_name);
    return true;
}

// Reads up to `size` bytes and returns how many; nullopt on an error.
std::optional<std::size_t> readAt(int file, char* to, std::size_t size, std::uint64_t offset) {
    std::size_t done = 0;
    while (done < size) {
        const auto got = ::pread(file, to + done, size - done, static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return std::nullopt;
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

int openToRead(const std::filesystem::path& file) {
    return ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW);
}

}  // namespace

std::string folderSegmentName(std::uint32_t number) {
    auto name = std::to_string(number);
    name.insert(0, digits - std::min(digits, name.size()), '0');
    return name.append(extension);
}

std::optional<std::uint32_t> folderSegmentNumber(std::string_view name) {
    if (name.size() != digits + extension.size() || !name.ends_with(extension)) return std::nullopt;
    std::uint32_t number = 0;
    const auto end = name.data() + digits;
    const auto [at, error] = std::from_chars(name.data(), end, number);
    return error == std::errc() && at == end ? std::optional(number) : std::nullopt;
}

FolderSegments::FolderSegments(std::filesystem::path folder, FolderIndex& index)
    : folder_(std::move(folder)), index_(index) {}

std::filesystem::path FolderSegments::pathOf(const Uuid& machine) const {
    return folder_ / machine.string();
}

std::filesystem::path FolderSegments::pathOf(std::uint32_t machine, std::uint32_t segment) const {
    return pathOf(index_.machine(machine).id) / folderSegmentName(segment);
}

std::uint32_t FolderSegments::lastOf(std::uint32_t machine) const {
    const auto found = segments_.find(machine);
    return found == segments_.end() || found->second.empty() ? 0 : found->second.rbegin()->first;
}

std::map<std::uint32_t, FolderRange> FolderSegments::rangesOf(std::uint32_t machine) const {
    std::map<std::uint32_t, FolderRange> ranges;
    if (const auto found = segments_.find(machine); found != segments_.end())
        for (const auto& [number, segment] : found->second)
            if (segment.start)
                ranges[number] = {*segment.start, std::max(segment.last, *segment.start - 1),
                                  segment.size};
    return ranges;
}

void FolderSegments::readAll(std::optional<Uuid> except) {
    std::vector<Uuid> machines;
    const auto visit = [&](const char* name) {
        if (machines.size() > mostMachines || !isUuid(name)) return;
        if (const auto id = Uuid::parse(name)) machines.push_back(*id);
    };
    if (!forEachName(folder_, 0, visit)) failFolder("read", folder_);
    if (machines.size() > mostMachines)
        throw CloudError(cloudErrorCode::limitExceeded,
                         "The folder " + folder_.string() + " holds the files of more than " +
                             std::to_string(mostMachines) + " computers.");
    if (except) std::erase(machines, *except);
    for (const auto& id : machines) readMachine(id);
}

void FolderSegments::readMachine(const Uuid& id) {
    const auto machine = index_.machineNumber(id);
    auto& segments = segments_[machine];
    list(machine, segments);
    // A segment may have waited for the content of another one.
    for (bool more = true; more;) {
        more = false;
        for (auto& [number, segment] : segments)
            if (segment.isNew) more |= parse(machine, number, segment);
    }
}

void FolderSegments::list(std::uint32_t machine, Segments& segments) {
    const auto folder = pathOf(index_.machine(machine).id);
    std::vector<std::uint32_t> present;
    const auto visit = [&](const char* name) {
        const auto number = folderSegmentNumber(name);
        struct stat status{};
        if (!number || ::lstat((folder / name).c_str(), &status) != 0 || !S_ISREG(status.st_mode))
            return;
        present.push_back(*number);
        auto& segment = segments[*number];
        const auto size = static_cast<std::uint64_t>(status.st_size);
        const auto changed = status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec;
        if (size != segment.size || changed != segment.changed) segment.isNew = true;
        segment.size = size;
        segment.changed = changed;
    };
    if (!forEachName(folder, O_NOFOLLOW, visit)) return;  // the folder of the machine is missing
    std::erase_if(segments, [&](const auto& one) {
        return std::find(present.begin(), present.end(), one.first) == present.end();
    });
}

// Returns whether new entries were indexed.
bool FolderSegments::parse(std::uint32_t machine, std::uint32_t number, Segment& segment) {
    const auto path = pathOf(machine, number);
    const Descriptor file(openToRead(path));
    if (!file) {
        segment.isNew = false;
        segment.changed = 0;  // retry later
        return false;
    }
    std::string bytes(readAhead, '\0');
    if (!segment.start) {
        const auto got = readAt(file.get(), bytes.data(), headSize, 0);
        segment.start = readHead(std::string_view(bytes).substr(0, got.value_or(0)),
                                 index_.machine(machine).id);
        segment.parsed = headSize;
        if (!segment.start) {
            segment.isNew = false;
            return false;
        }
    }
    if (*segment.start > index_.machine(machine).covered + 1)
        return false;  // an earlier segment is missing
    segment.isNew = false;

    const auto begin = segment.parsed;
    std::size_t kept = 0;  // size of the incomplete entry at the end
    for (;;) {
        const auto at = segment.parsed;
        const auto got = readAt(file.get(), bytes.data() + kept, bytes.size() - kept, at + kept);
        if (!got) {
            segment.changed = 0;
            break;
        }
        std::string_view rest(bytes.data(), kept + *got);
        const bool isEnd = rest.size() < bytes.size();
        while (const auto body = readFrame(rest)) {
            const auto size = frameSize + body->size();
            if (const auto entry = readBody(*body)) {
                const auto offset = segment.parsed + frameSize;
                index_.take(*entry,
                            {machine, number, offset, static_cast<std::uint32_t>(body->size())});
                if (entry->kind == Entry::Kind::end)
                    index_.takeWhole(machine, number, *segment.start, entry->number);
                segment.last = std::max(segment.last, entry->number);
            }
            segment.parsed += size;
            rest.remove_prefix(size);
        }
        const auto wanted = frameSizeOf(rest);
        if (isEnd || wanted <= rest.size()) break;  // incomplete, or damaged
        kept = rest.size();
        std::copy(rest.begin(), rest.end(), bytes.begin());
        if (wanted > bytes.size()) bytes.resize(wanted);
    }
    return segment.parsed != begin;
}

bool FolderBodies::open(const FolderPlace& place) {
    if (file_ && machine_ == place.machine && segment_ == place.segment) return true;
    file_.reset();
    window_.clear();
    machine_ = place.machine;
    segment_ = place.segment;
    const int opened = openToRead(segments_.pathOf(place.machine, place.segment));
    if (opened < 0) return false;
    file_.emplace(opened);
    return true;
}

std::optional<std::string_view> FolderBodies::read(const FolderPlace& place) {
    if (!open(place)) return std::nullopt;
    const auto begin = place.offset - frameSize;
    const auto size = frameSize + place.length;
    if (begin < offset_ || begin + size > offset_ + window_.size()) {
        window_.resize(std::max(readAhead, size));
        offset_ = begin;
        window_.resize(readAt(file_->get(), window_.data(), window_.size(), begin).value_or(0));
    }
    const auto at = static_cast<std::size_t>(begin - offset_);
    if (window_.size() < at + size) return std::nullopt;
    const auto body = readFrame(std::string_view(window_).substr(at, size));
    return body && body->size() == place.length ? body : std::nullopt;
}

}  // namespace quorvi
