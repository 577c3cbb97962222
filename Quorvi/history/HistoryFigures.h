#pragma once

#include <memory>
#include <stop_token>

#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"
#include "QuorviCore/history/HistorySummaries.h"

namespace quorvi {

// The sums that the pages show, taken in the background: of years of dictations they take some ten
// milliseconds after a change, and nothing otherwise. Main thread; what it is given outlives it.
class HistoryFigures {
public:
    struct Sums {
        UsageSummary allTime;
        HistorySummaries::Period period;
    };

    HistoryFigures(Executor& executor, Scheduler& scheduler)
        : executor_(executor), scheduler_(scheduler) {}

    // Throws Cancelled when a newer question has made this one pointless.
    Task<Sums> of(DictationRecords records, UsagePeriod period, Date now, Calendar calendar,
                  std::stop_token stop);

private:
    Executor& executor_;
    Scheduler& scheduler_;
    // Shared with the jobs, which run one at a time.
    std::shared_ptr<HistorySummaries> summaries_ = std::make_shared<HistorySummaries>();
};

}  // namespace quorvi
