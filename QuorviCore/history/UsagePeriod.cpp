#include "QuorviCore/history/UsagePeriod.h"

#include <limits>

namespace quorvi {

namespace {

Date startOfDayBefore(Date now, int days, const Calendar& calendar) {
    auto day = calendar.day(now);
    for (; days > 0; --days) day = calendar.dayBefore(day);
    return day.start;
}

}  // namespace

Message title(UsagePeriod period) {
    switch (period) {
        case UsagePeriod::today:
            return say::today();
        case UsagePeriod::week:
            return say::sevenDays();
        case UsagePeriod::month:
            return say::thirtyDays();
        case UsagePeriod::calendarMonth:
            return say::thisMonth();
        case UsagePeriod::all:
            return say::allTime();
    }
    return {};
}

std::optional<Date> startOf(UsagePeriod period, Date now, const Calendar& calendar) {
    switch (period) {
        case UsagePeriod::today:
            return startOfDayBefore(now, 0, calendar);
        case UsagePeriod::week:
            return startOfDayBefore(now, 6, calendar);
        case UsagePeriod::month:
            return startOfDayBefore(now, 29, calendar);
        case UsagePeriod::calendarMonth:
            return calendar.startOfMonth(now);
        case UsagePeriod::all:
            break;
    }
    return std::nullopt;
}

DictationRecords filter(UsagePeriod period, const DictationRecords& records, Date now,
                        const Calendar& calendar) {
    constexpr Date always{-std::numeric_limits<double>::infinity()};
    return records.between(startOf(period, now, calendar).value_or(always), now);
}

}  // namespace quorvi
