#include "Quorvi/history/HistorySearch.h"

#include <utility>

#include "QuorviCore/async/Async.h"

namespace quorvi {

Task<HistoryMatches> HistorySearch::find(DictationRecords records, std::string query,
                                         std::stop_token stop) {
    auto finding = inBackground(
        executor_, scheduler_,
        [index = index_, records = std::move(records), query = std::move(query), stop] {
            index->update(records, stop);
            return index->find(query, HistoryIndex::Among::texts, stop);
        },
        stop);
    co_return co_await finding;
}

}  // namespace quorvi
