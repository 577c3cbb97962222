#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <filesystem>
#include <mutex>

#include "QuorviCore/base/ColdMemory.h"

namespace quorvi {

// The pages of the cold memory in a file without a name, which is gone with the process. It is in a
// folder of the user's data, since the usual places for temporary files are memory themselves.
// Where there is no such file, the disk is full, or there are only a few, segments stay in the
// process's memory.
class ColdFile final : public ColdMemory::Pages {
public:
    explicit ColdFile(std::filesystem::path folder);
    ColdFile(const ColdFile&) = delete;
    ColdFile& operator=(const ColdFile&) = delete;

    char* begin() const override { return begin_; }
    bool open(std::size_t segment) override;
    void complete(std::size_t segment) override;
    void discard(std::size_t segment) override;
    void giveBack() override;

private:
    enum class State : std::uint8_t { filling, complete, inFile, gone };

    bool isWorthAFile() const;
    bool moveOut(std::size_t segment);
    void punch(std::size_t segment);
    char* addressOf(std::size_t segment) const {
        return begin_ + segment * ColdMemory::segmentSize;
    }

    const std::filesystem::path folder_;
    char* const begin_;  // nullptr without the address space
    std::array<std::atomic<State>, ColdMemory::segments> states_{};
    std::mutex givingBack_;
    std::atomic<int> file_ = -1;  // made for the first segment
};

}  // namespace quorvi
