#pragma once

#include <vector>

#include "QuorviCore/history/HistoryIndex.h"
#include "QuorviCore/locale/Calendar.h"

namespace quorvi {

// The records of one day.
struct HistoryDay {
    Date date;  // the start of the day
    std::vector<DictationRecord> entries;

    bool operator==(const HistoryDay&) const = default;
};

// Groups the first `count` matches by day: newest day first, and newest record first within a day.
std::vector<HistoryDay> historyDays(const HistoryMatches& matches, std::size_t count,
                                    const Calendar& calendar);

}  // namespace quorvi
