#include "Quorvi/history/HistorySearch.h"

#include <utility>

#include "QuorviCore/async/Async.h"

namespace quorvi {

void HistorySearch::prepare(const DictationRecords& records) {
    if (records.isSharedWith(index_.records())) return;
    folding_.cancel();
    folding_ = tasks_.start(
        [this, records](std::stop_token stop) { return fold(records, std::move(stop)); });
}

Task<void> HistorySearch::fold(DictationRecords records, std::stop_token stop) {
    auto folding = inBackground(
        executor_, scheduler_,
        [state = state_, records = std::move(records), stop] {
            state->index.update(records, stop);
            return state->index;
        },
        stop);
    index_ = co_await folding;
}

Task<HistoryMatches> HistorySearch::find(DictationRecords records, std::string query,
                                         std::stop_token stop) {
    struct Found {
        HistoryIndex index;
        HistoryMatches matches;
    };
    auto finding = inBackground(
        executor_, scheduler_,
        [state = state_, records = std::move(records), query = std::move(query), stop] {
            state->index.update(records, stop);
            auto matches = state->index.find(query, HistoryIndex::Among::texts, stop);
            return Found{state->index, std::move(matches)};
        },
        stop);
    auto found = co_await finding;
    index_ = std::move(found.index);
    co_return std::move(found.matches);
}

std::optional<HistoryMatches> HistorySearch::findNow(const DictationRecords& records,
                                                     std::string_view query) const {
    if (!records.isSharedWith(index_.records())) return std::nullopt;
    return index_.find(query, HistoryIndex::Among::texts);
}

}  // namespace quorvi
