#pragma once

#include <memory>
#include <stop_token>
#include <string>

#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"
#include "QuorviCore/history/HistoryIndex.h"

namespace quorvi {

// Searches the history in the background. Folding all texts takes a second or two after a start; a
// search of folded texts takes a few milliseconds. Main thread; executor and scheduler outlive it.
class HistorySearch {
public:
    HistorySearch(Executor& executor, Scheduler& scheduler)
        : executor_(executor), scheduler_(scheduler) {}

    // Returns the matching records with a text. Throws Cancelled if stopped.
    Task<HistoryMatches> find(DictationRecords records, std::string query, std::stop_token stop);
    // Frees the folded texts, in the background; the next search folds them again.
    void forget();

private:
    Executor& executor_;
    Scheduler& scheduler_;
    // Shared with the jobs, which run one at a time and alone use it.
    std::shared_ptr<HistoryIndex> index_ = std::make_shared<HistoryIndex>();
};

}  // namespace quorvi
