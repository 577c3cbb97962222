#pragma once

#include <unicode/calendar.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "QuorviCore/history/UsageCost.h"
#include "QuorviCore/history/UsagePeriod.h"
#include "QuorviCore/history/UsageSummary.h"

namespace quorvi::test {

// What the summaries of a page mean, said with a calendar calculation for every record: slow, and
// the reference that the quick form is compared with. For one thread.
class LiteralUsage {
public:
    explicit LiteralUsage(const Calendar& calendar);

    UsageSummary summary(const std::vector<DictationRecord>& records, Date now, int activityDays);

    std::vector<DictationRecord> filter(const std::vector<DictationRecord>& records, Date from,
                                        Date now);

    // The cost of all of them.
    UsageCostSummary cost(const std::vector<DictationRecord>& records);

private:
    static double secondsOf(const DictationRecord& record) {
        return std::isfinite(record.audioSeconds) ? std::max(record.audioSeconds, 0.0) : 0;
    }
    Date startOfDayBefore(Date start) { return startOfDay({start.secondsSinceReferenceDate - 1}); }
    Date startOfDay(Date date);

    std::unique_ptr<icu::Calendar> calendar_;
};

}  // namespace quorvi::test
