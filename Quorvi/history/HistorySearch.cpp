#include "Quorvi/history/HistorySearch.h"

#include <utility>

#include "QuorviCore/async/Async.h"
#include "QuorviCore/base/ColdMemory.h"

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

void HistorySearch::forget() {
    executor_.run([old = std::exchange(index_, std::make_shared<HistoryIndex>())]() mutable {
        old.reset();
        ColdMemory::giveBack();
    });
}

}  // namespace quorvi
