#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>

#include "Quorvi/platform/linux/folder/FolderLog.h"
#include "Quorvi/platform/linux/posix/Descriptor.h"

namespace quorvi {

// Appends to a machine's own segments. One thread at a time.
class FolderWriter {
public:
    // `next`: the number that no segment has, nor any greater. A segment is at most so large,
    // unless it holds one append only.
    FolderWriter(std::filesystem::path folder, const Uuid& machine, std::uint32_t next,
                 std::uint64_t segmentSize)
        : folder_(std::move(folder)), machine_(machine), segmentSize_(segmentSize), next_(next) {}

    struct Position {
        std::uint32_t segment;
        std::uint64_t offset;
    };
    // Appends the entries, whose numbers are `start` and above, and returns where they stand. They
    // are there to stay after sync(). Throws CloudError; what has been written by then may be there
    // or not.
    Position append(std::string_view entries, std::uint64_t start);
    void sync();

    // The next entries begin a new segment. Those before are there to stay.
    void finishSegment();
    std::uint32_t nextSegment() const { return next_; }
    // Removes segments before this one.
    void removeBelow(std::uint32_t segment);

private:
    void begin(std::uint64_t start);
    std::filesystem::path lastSegment() const;

    const std::filesystem::path folder_;
    const Uuid machine_;
    const std::uint64_t segmentSize_;
    std::uint32_t next_;
    std::unique_ptr<Descriptor> file_;  // the last segment; none: the next append begins one
    std::uint64_t size_ = 0;
    bool isSynced_ = true;
};

}  // namespace quorvi
