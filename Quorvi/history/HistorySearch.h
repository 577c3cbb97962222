#pragma once

#include <memory>
#include <optional>
#include <stop_token>
#include <string>

#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/TaskScope.h"
#include "QuorviCore/history/HistoryIndex.h"

namespace quorvi {

// The search of the history page. Folding all texts takes a second or two after a start and is done
// in the background; a search of a folded history takes some milliseconds, there too. Main thread;
// what it is given outlives it.
class HistorySearch {
public:
    HistorySearch(Executor& executor, Scheduler& scheduler)
        : executor_(executor), scheduler_(scheduler), tasks_(scheduler) {}

    // Folds what is new in the records, so that the next search need not wait for it. A list that
    // is being folded when a newer one comes is given up, without losing what is done.
    void prepare(const DictationRecords& records);

    // The records with a text that match; throws Cancelled when a newer query has made this one
    // pointless.
    Task<HistoryMatches> find(DictationRecords records, std::string query, std::stop_token stop);

    // The same at once, when the records are folded already.
    std::optional<HistoryMatches> findNow(const DictationRecords& records,
                                          std::string_view query) const;

private:
    // Shared with the jobs, which run one at a time.
    struct State {
        HistoryIndex index;  // the executor's
    };

    Task<void> fold(DictationRecords records, std::stop_token stop);

    Executor& executor_;
    Scheduler& scheduler_;
    std::shared_ptr<State> state_ = std::make_shared<State>();
    HistoryIndex index_;  // the last that was folded, for this thread
    TaskHandle folding_;
    TaskScope tasks_;
};

}  // namespace quorvi
