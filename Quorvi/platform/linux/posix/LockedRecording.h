#pragma once

#include <cstddef>
#include <memory>

#include "Quorvi/platform/RecordingFiles.h"

namespace quorvi {

// A recording in pages of its own, which are kept out of core dumps and, within the user's limit
// for locked memory, out of the swap space.
class LockedRecording : public RecordingInMemory {
public:
    // Returns nullptr if the recording is empty or there is no memory for it.
    static std::unique_ptr<LockedRecording> of(const Bytes& audio);
    ~LockedRecording() override;
    LockedRecording(const LockedRecording&) = delete;
    LockedRecording& operator=(const LockedRecording&) = delete;

    Bytes read() const override { return {pages_, pages_ + size_}; }

private:
    LockedRecording(std::uint8_t* pages, std::size_t size) : pages_(pages), size_(size) {}

    std::uint8_t* const pages_;
    const std::size_t size_;
};

}  // namespace quorvi
