#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/platform/linux/folder/FolderIndex.h"
#include "Quorvi/platform/linux/posix/Descriptor.h"

namespace quorvi {

// The name of a segment's file, and the number in such a name; nothing for any other name, such as
// those of file synchronisers' drafts and conflicts.
std::string folderSegmentName(std::uint32_t number);
std::optional<std::uint32_t> folderSegmentNumber(std::string_view name);

// Brings an index up to date with the machines' folders. Whatever is not there yet, or not whole,
// is passed over until it is. One thread at a time.
class FolderSegments {
public:
    FolderSegments(std::filesystem::path folder, FolderIndex& index);

    // All machines but `except`, whose log is only written by its own program. Throws CloudError
    // when the folder can't be read.
    void readAll(std::optional<Uuid> except);
    void readMachine(const Uuid& id);

    std::filesystem::path pathOf(const Uuid& machine) const;
    std::filesystem::path pathOf(std::uint32_t machine, std::uint32_t segment) const;
    // The numbers of a machine's segments that have been seen.
    std::vector<std::uint32_t> segmentsOf(std::uint32_t machine) const;
    // Bytes of a machine's segments.
    std::uint64_t sizeOf(std::uint32_t machine) const;

private:
    struct Segment {
        std::optional<std::uint64_t> start;  // once the head has been read
        std::uint64_t parsed = 0;            // bytes that have been taken in
        std::uint64_t size = 0;
        std::int64_t changed = 0;  // modification time
        bool isNew = true;         // there may be more to take in
    };
    using Segments = std::map<std::uint32_t, Segment>;

    void list(std::uint32_t machine, Segments& segments);
    bool parse(std::uint32_t machine, std::uint32_t number, Segment& segment);

    const std::filesystem::path folder_;
    FolderIndex& index_;
    std::map<std::uint32_t, Segments> segments_;
};

// Reads bodies of entries, quickly when they stand one after another.
class FolderBodies {
public:
    explicit FolderBodies(const FolderSegments& segments) : segments_(segments) {}

    // The body, valid until the next call; nothing when it is not there any more.
    std::optional<std::string_view> read(const FolderPlace& place);

private:
    bool open(const FolderPlace& place);

    const FolderSegments& segments_;
    std::optional<Descriptor> file_;
    std::uint32_t machine_ = 0;
    std::uint32_t segment_ = 0;
    std::uint64_t offset_ = 0;
    std::string window_;
};

}  // namespace quorvi
