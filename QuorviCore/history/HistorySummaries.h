#pragma once

#include <limits>
#include <map>
#include <optional>

#include "QuorviCore/history/UsageCost.h"
#include "QuorviCore/history/UsagePeriod.h"
#include "QuorviCore/history/UsageSummary.h"

namespace quorvi {

// The summaries that a page shows, kept until something changes them: the records, the day, the
// calendar, or an instant that one of the records was waiting for. So a page may ask at every
// display. For one thread at a time.
class HistorySummaries {
public:
    // What belongs to one period. Valid until the next call.
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
    // The instants between which nothing changes; the second is not included.
    Date from_{std::numeric_limits<double>::infinity()}, until_;
    std::map<UsagePeriod, Period> periods_;
};

}  // namespace quorvi
