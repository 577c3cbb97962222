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
// memory. It answers as DictationRecord::matches() does for each record. An index never changes and
// may be searched on any thread; the index of a changed list folds only what is new and shares the
// rest.
class HistoryIndex {
public:
    enum class Among {
        records,  // all
        texts,    // those that have a text, which is what a page lists
    };

    HistoryIndex() = default;

    // The index of another list. Throws Cancelled when stopped.
    HistoryIndex updated(const DictationRecords& records, const std::stop_token& stop = {}) const;

    // Throws Cancelled when stopped.
    HistoryMatches find(std::string_view query, Among among,
                        const std::stop_token& stop = {}) const;

    const DictationRecords& records() const { return records_; }

private:
    struct FoldedChunk;
    using FoldedPointer = std::shared_ptr<const FoldedChunk>;
    static FoldedPointer fold(const DictationRecords::Chunk& chunk);

    DictationRecords records_;
    std::vector<FoldedPointer> folded_;  // one for each part of the list
};

}  // namespace quorvi
