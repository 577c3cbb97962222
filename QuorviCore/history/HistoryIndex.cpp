#include "QuorviCore/history/HistoryIndex.h"

#include <algorithm>
#include <unordered_map>

#include "QuorviCore/async/Async.h"
#include "QuorviCore/text/ByteSearch.h"
#include "QuorviCore/text/Folding.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

// The folded texts of a chunk, concatenated, and their applications.
struct HistoryIndex::FoldedChunk {
    std::string texts;
    std::vector<std::uint32_t> ends;  // of each record's text in `texts`
    std::vector<std::string> apps;    // folded, each once
    std::vector<std::uint16_t> appOf;

    // Calls found(n, inText) for each record n of the chunk that contains the needle, in order.
    template <class Found>
    void search(const text::ByteSearch& search, std::string_view needle, Found found) const;
};

HistoryIndex::FoldedPointer HistoryIndex::fold(const DictationRecords::Chunk& chunk) {
    FoldedChunk result;
    result.ends.reserve(chunk.records.size());
    result.appOf.reserve(chunk.records.size());
    std::unordered_map<SharedString, std::uint16_t> known;
    for (const auto& record : chunk.records) {
        if (record.text) result.texts += text::searchFolded(*record.text);
        result.ends.push_back(static_cast<std::uint32_t>(result.texts.size()));
        const auto [app, isNew] =
            known.try_emplace(record.appName, static_cast<std::uint16_t>(result.apps.size()));
        if (isNew) result.apps.push_back(text::searchFolded(record.appName));
        result.appOf.push_back(app->second);
    }
    result.texts.shrink_to_fit();
    return std::make_shared<const FoldedChunk>(std::move(result));
}

void HistoryIndex::update(const DictationRecords& records, const std::stop_token& stop) {
    if (records.isSharedWith(records_)) return;
    std::unordered_map<const DictationRecords::Chunk*, FoldedPointer> known;
    const auto& old = records_.parts();
    for (std::size_t i = 0; i < old.size(); ++i) known.emplace(old[i].chunk.get(), folded_[i]);
    for (const auto& [chunk, folded] : unfinished_) known.emplace(chunk.get(), folded);

    std::vector<FoldedPointer> result;
    result.reserve(records.parts().size());
    for (const auto& part : records.parts()) {
        throwIfStopped(stop);
        const auto found = known.find(part.chunk.get());
        if (found != known.end()) {
            result.push_back(found->second);
        } else {
            result.push_back(fold(*part.chunk));
            unfinished_.emplace_back(part.chunk, result.back());
        }
    }
    records_ = records;
    folded_ = std::move(result);
    unfinished_.clear();
}

HistoryMatches HistoryIndex::texts(const DictationRecords& records) {
    HistoryMatches matches{records, {}};
    for (const auto& part : records.parts())
        for (std::size_t n = 0; n < part.chunk->records.size(); ++n)
            if (part.chunk->records[n].text)
                matches.positions.push_back(static_cast<std::uint32_t>(part.begin + n));
    return matches;
}

template <class Found>
void HistoryIndex::FoldedChunk::search(const text::ByteSearch& search, std::string_view needle,
                                       Found found) const {
    std::vector<bool> appMatches;
    bool anyApp = false;
    for (const auto& app : apps) {
        appMatches.push_back(app.find(needle) != app.npos);
        anyApp = anyApp || appMatches.back();
    }
    std::size_t place = search.find(texts, 0);
    for (std::size_t n = 0; n < ends.size(); ++n) {
        if (!anyApp) {
            // Advance to the record that contains the match.
            if (place == texts.npos) return;
            n = static_cast<std::size_t>(
                std::upper_bound(ends.begin() + static_cast<std::ptrdiff_t>(n), ends.end(), place) -
                ends.begin());
        }
        const std::size_t begin = n == 0 ? 0 : ends[n - 1];
        if (place < begin) place = search.find(texts, begin);
        // A match across two texts does not count.
        while (place < ends[n] && place + needle.size() > ends[n])
            place = search.find(texts, place + 1);
        const bool inText = place < ends[n];
        if (inText || appMatches[appOf[n]]) found(n, inText);
    }
}

HistoryMatches HistoryIndex::find(std::string_view query, Among among,
                                  const std::stop_token& stop) const {
    HistoryMatches matches{records_, {}};
    const bool findsAll = text::trimmed(query).empty();
    const std::string needle = findsAll ? std::string() : text::searchFolded(query);
    const auto& parts = records_.parts();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        throwIfStopped(stop);
        const auto& part = parts[i];
        // A match in the text makes reading the record, which is slow, unnecessary.
        const auto found = [&](std::size_t n, bool inText) {
            if (inText || among == Among::records || part.chunk->records[n].text)
                matches.positions.push_back(static_cast<std::uint32_t>(part.begin + n));
        };
        if (needle.empty()) {
            for (std::size_t n = 0; n < part.chunk->records.size(); ++n) found(n, false);
        } else {
            folded_[i]->search(text::ByteSearch(needle), needle, found);
        }
    }
    return matches;
}

}  // namespace quorvi
