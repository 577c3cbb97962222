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

std::string_view rawValue(UsagePeriod period) {
    switch (period) {
        case UsagePeriod::today:
            return "Today";
        case UsagePeriod::week:
            return "7 days";
        case UsagePeriod::month:
            return "30 days";
        case UsagePeriod::calendarMonth:
            return "This month";
        case UsagePeriod::all:
            return "All time";
    }
    return {};
}

std::optional<UsagePeriod> usagePeriodFromRawValue(std::string_view raw) {
    for (const auto period : allUsagePeriods)
        if (rawValue(period) == raw) return period;
    return std::nullopt;
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
