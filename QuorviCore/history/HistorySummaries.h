#pragma once

#include <limits>
#include <map>
#include <optional>

#include "QuorviCore/history/UsageCost.h"
#include "QuorviCore/history/UsagePeriod.h"
#include "QuorviCore/history/UsageSummary.h"

namespace quorvi {

// Caches the summaries that a page shows until the records, the day or the calendar change, or a
// record from the future becomes present. So a page may ask at every display. One thread at a time.
class HistorySummaries {
public:
    // The summaries of a period. Valid until the next call.
    struct Period {
        UsageSummary usage;
        UsageCostSummary cost;
    };

    const UsageSummary& allTime(const DictationRecords& records, Date now,
                                const Calendar& calendar) {
        return period(UsagePeriod::all, records, now, calendar).usage;
    }
    const Period& period(UsagePeriod period, const DictationRecords& records, Date now,
                         const Calendar& calendar);

private:
    bool isCurrent(const DictationRecords& records, Date now, const Calendar& calendar) const;
    void count(UsagePeriod period, Date now);

    DictationRecords records_;
    std::optional<Calendar> calendar_;
    // The cached values hold from the first instant until before the second.
    Date from_{std::numeric_limits<double>::infinity()}, until_;
    std::map<UsagePeriod, Period> periods_;
};

}  // namespace quorvi
