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

inline constexpr std::uint32_t largestSegmentNumber = 99'999'999;
// Far more than a user has. A part of them would be another state of the data.
inline constexpr std::size_t mostMachines = 1000;

// Convert between the number of a segment and its file name. folderSegmentNumber() returns nullopt
// for other names, such as drafts and conflict copies of file synchronisers.
std::string folderSegmentName(std::uint32_t number);
std::optional<std::uint32_t> folderSegmentNumber(std::string_view name);

// The numbers of the entries of a segment; `last` is start - 1 if it has none.
struct FolderRange {
    std::uint64_t start = 1;
    std::uint64_t last = 0;
    std::uint64_t bytes = 0;
};

// Updates an index from the machines' folders. Skips what is missing or incomplete until it is
// complete. One thread at a time.
class FolderSegments {
public:
    FolderSegments(std::filesystem::path folder, FolderIndex& index);

    // Reads all machines except `except`, whose log this program writes. Throws CloudError if the
    // folder cannot be read, or has more than `mostMachines`.
    void readAll(std::optional<Uuid> except);
    void readMachine(const Uuid& id);

    std::filesystem::path pathOf(const Uuid& machine) const;
    std::filesystem::path pathOf(std::uint32_t machine, std::uint32_t segment) const;
    // Returns the number of the last segment of a machine, readable or not; 0 without one.
    std::uint32_t lastOf(std::uint32_t machine) const;
    // Returns which entries the segments of a machine have, those that can be read.
    std::map<std::uint32_t, FolderRange> rangesOf(std::uint32_t machine) const;

private:
    struct Segment {
        std::optional<std::uint64_t> start;  // set when the head has been read
        std::uint64_t last = 0;              // number of the last entry
        std::uint64_t parsed = 0;            // bytes that have been indexed
        std::uint64_t size = 0;
        std::int64_t changed = 0;  // modification time
        bool isNew = true;         // may have more to index
    };
    using Segments = std::map<std::uint32_t, Segment>;

    void list(std::uint32_t machine, Segments& segments);
    bool parse(std::uint32_t machine, std::uint32_t number, Segment& segment);

    const std::filesystem::path folder_;
    FolderIndex& index_;
    std::map<std::uint32_t, Segments> segments_;
};

// Reads the bodies of entries; fast if they are consecutive.
class FolderBodies {
public:
    explicit FolderBodies(const FolderSegments& segments) : segments_(segments) {}

    // Returns the body, valid until the next call; nullopt if it no longer exists.
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
