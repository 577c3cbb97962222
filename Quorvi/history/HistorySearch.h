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

// Searches the history in the background. Folding all texts takes a second or two after a start; a
// search of folded texts takes a few milliseconds. Main thread; executor and scheduler outlive it.
class HistorySearch {
public:
    HistorySearch(Executor& executor, Scheduler& scheduler)
        : executor_(executor), scheduler_(scheduler), tasks_(scheduler) {}

    // Folds new records, so that the next search does not wait for it. Cancels the folding of an
    // older list, keeping the chunks that are done.
    void prepare(const DictationRecords& records);

    // Returns the matching records with a text. Throws Cancelled if stopped.
    Task<HistoryMatches> find(DictationRecords records, std::string query, std::stop_token stop);

    // Searches synchronously if the records are already folded; otherwise returns nullopt.
    std::optional<HistoryMatches> findNow(const DictationRecords& records,
                                          std::string_view query) const;

private:
    // Shared with the jobs, which run one at a time.
    struct State {
        HistoryIndex index;  // used on the executor only
    };

    Task<void> fold(DictationRecords records, std::stop_token stop);

    Executor& executor_;
    Scheduler& scheduler_;
    std::shared_ptr<State> state_ = std::make_shared<State>();
    HistoryIndex index_;  // the last folded one, for the main thread
    TaskHandle folding_;
    TaskScope tasks_;
};

}  // namespace quorvi
