#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/history/DictationRecords.h"

namespace quorvi {

// What a search found: positions in the list that was searched, in its order.
struct HistoryMatches {
    DictationRecords records;
    std::vector<std::uint32_t> positions;

    std::size_t size() const { return positions.size(); }
    const DictationRecord& operator[](std::size_t n) const { return records[positions[n]]; }
};

// The texts of a list of records, folded for searching, so that a search is only a look through
// memory. It answers as DictationRecord::matches() does for each record. For one thread at a time,
// but copies, which share everything, may each be on another.
class HistoryIndex {
public:
    enum class Among {
        records,  // all
        texts,    // those that have a text, which is what a page lists
    };

    // Makes it the index of another list, folding only what is new. Throws Cancelled when stopped;
    // what has been folded by then need not be folded again.
    void update(const DictationRecords& records, const std::stop_token& stop = {});

    // Throws Cancelled when stopped.
    HistoryMatches find(std::string_view query, Among among,
                        const std::stop_token& stop = {}) const;

    const DictationRecords& records() const { return records_; }

    // What finding everything among the texts comes to, which needs no index.
    static HistoryMatches texts(const DictationRecords& records);

private:
    struct FoldedChunk;
    using FoldedPointer = std::shared_ptr<const FoldedChunk>;
    static FoldedPointer fold(const DictationRecords::Chunk& chunk);

    DictationRecords records_;
    std::vector<FoldedPointer> folded_;  // one for each part of the list
    // Of an update that was stopped.
    std::vector<std::pair<DictationRecords::ChunkPointer, FoldedPointer>> unfinished_;
};

}  // namespace quorvi
