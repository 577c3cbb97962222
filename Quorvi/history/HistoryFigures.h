#pragma once

#include <memory>
#include <stop_token>

#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"
#include "QuorviCore/history/HistorySummaries.h"

namespace quorvi {

// Computes the usage figures of the pages in the background: after a change about ten milliseconds
// for years of dictations, otherwise nothing. Main thread; executor and scheduler outlive it.
class HistoryFigures {
public:
    struct Sums {
        UsageSummary allTime;
        HistorySummaries::Period period;
    };

    HistoryFigures(Executor& executor, Scheduler& scheduler)
        : executor_(executor), scheduler_(scheduler) {}

    // Throws Cancelled if stopped.
    Task<Sums> of(DictationRecords records, UsagePeriod period, Date now, Calendar calendar,
                  std::stop_token stop);

private:
    Executor& executor_;
    Scheduler& scheduler_;
    // Shared with the jobs, which run one at a time.
    std::shared_ptr<HistorySummaries> summaries_ = std::make_shared<HistorySummaries>();
};

}  // namespace quorvi
