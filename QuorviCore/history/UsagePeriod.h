#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "QuorviCore/history/DictationRecords.h"
#include "QuorviCore/locale/Calendar.h"

namespace quorvi {

// A span of time up to now that usage is shown for.
enum class UsagePeriod { today, week, month, calendarMonth, all };

inline constexpr std::array allUsagePeriods{UsagePeriod::today, UsagePeriod::week,
                                            UsagePeriod::month, UsagePeriod::calendarMonth,
                                            UsagePeriod::all};

// Also what the user reads.
std::string_view rawValue(UsagePeriod period);
std::optional<UsagePeriod> usagePeriodFromRawValue(std::string_view raw);

// When the period began; nothing when it has no beginning.
std::optional<Date> startOf(UsagePeriod period, Date now, const Calendar& calendar);

// The records of the period, in their order.
DictationRecords filter(UsagePeriod period, const DictationRecords& records, Date now,
                        const Calendar& calendar);

}  // namespace quorvi
