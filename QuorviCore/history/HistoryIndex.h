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

// The result of a search: positions in the searched list, in its order.
struct HistoryMatches {
    DictationRecords records;
    std::vector<std::uint32_t> positions;

    std::size_t size() const { return positions.size(); }
    const DictationRecord& operator[](std::size_t n) const { return records[positions[n]]; }
};

// The texts of a list of records, folded for searching. A search gives the same result as
// DictationRecord::matches() on each record. One thread at a time.
class HistoryIndex {
public:
    enum class Among {
        records,  // all
        texts,    // those with a text, as a page lists them
    };

    // Replaces the indexed list, folding only new chunks. Throws Cancelled if stopped; chunks that
    // are folded by then are kept.
    void update(const DictationRecords& records, const std::stop_token& stop = {});

    // Throws Cancelled if stopped.
    HistoryMatches find(std::string_view query, Among among,
                        const std::stop_token& stop = {}) const;

    // Returns all records with a text; needs no index.
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
