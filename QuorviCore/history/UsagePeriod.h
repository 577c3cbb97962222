#pragma once

#include <array>
#include <optional>

#include "QuorviCore/history/DictationRecords.h"
#include "QuorviCore/locale/Calendar.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// A span of time up to now for which usage is shown. Not stored.
enum class UsagePeriod { today, week, month, calendarMonth, all };

inline constexpr std::array allUsagePeriods{UsagePeriod::today, UsagePeriod::week,
                                            UsagePeriod::month, UsagePeriod::calendarMonth,
                                            UsagePeriod::all};

Message title(UsagePeriod period);

// Returns when the period began; nullopt for all time.
std::optional<Date> startOf(UsagePeriod period, Date now, const Calendar& calendar);

// Returns the records of the period, in their order.
DictationRecords filter(UsagePeriod period, const DictationRecords& records, Date now,
                        const Calendar& calendar);

}  // namespace quorvi
