#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

#include "Quorvi/platform/linux/folder/FolderLog.h"
#include "Quorvi/platform/linux/posix/Descriptor.h"

namespace quorvi {

// Appends to the segments of this machine. One thread at a time.
class FolderWriter {
public:
    // `next` is greater than the number of any existing segment. A segment exceeds `segmentSize`
    // only if it holds a single append.
    // Throws CloudError if the folder can't be opened; a link in its place is none.
    FolderWriter(std::filesystem::path folder, const Uuid& machine, std::uint32_t next,
                 std::uint64_t segmentSize);

    struct Position {
        std::uint32_t segment;
        std::uint64_t offset;
    };
    // Appends entries with numbers from `start` up and returns their position. They are durable
    // after sync(). Throws CloudError; entries written before may or may not be there.
    Position append(std::string_view entries, std::uint64_t start);
    void sync();

    // Makes all entries durable; the next append starts a new segment.
    void finishSegment();
    std::uint32_t nextSegment() const { return next_; }
    // Removes segments.
    void remove(const std::vector<std::uint32_t>& segments);

private:
    void begin(std::uint64_t start);
    std::filesystem::path lastSegment() const;

    void syncFolder() const;

    const std::filesystem::path folder_;
    const Descriptor opened_;  // the folder
    const Uuid machine_;
    const std::uint64_t segmentSize_;
    std::uint32_t next_;
    std::unique_ptr<Descriptor> file_;  // the last segment; nullptr if the next append starts one
    std::uint64_t size_ = 0;
    bool isSynced_ = true;
};

}  // namespace quorvi
