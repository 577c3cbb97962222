#include "Quorvi/history/HistoryFigures.h"

#include <utility>

#include "QuorviCore/async/Async.h"

namespace quorvi {

Task<HistoryFigures::Sums> HistoryFigures::of(DictationRecords records, UsagePeriod period,
                                              Date now, Calendar calendar, std::stop_token stop) {
    auto summing = inBackground(
        executor_, scheduler_,
        [summaries = summaries_, records = std::move(records), period, now,
         calendar = std::move(calendar)] {
            Sums sums;
            sums.period = summaries->period(period, records, now, calendar);
            sums.allTime = summaries->allTime(records, now, calendar);
            return sums;
        },
        stop);
    auto sums = co_await summing;
    throwIfStopped(stop);
    co_return std::move(sums);
}

}  // namespace quorvi
