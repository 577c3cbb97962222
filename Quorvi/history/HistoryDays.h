#pragma once

#include <vector>

#include "QuorviCore/history/HistoryIndex.h"
#include "QuorviCore/locale/Calendar.h"

namespace quorvi {

// The records of one day of a list.
struct HistoryDay {
    Date date;  // the start of the day
    std::vector<DictationRecord> entries;

    bool operator==(const HistoryDay&) const = default;
};

// The first `count` of what was found, by day: the newest day first, in it the newest record.
std::vector<HistoryDay> historyDays(const HistoryMatches& matches, std::size_t count,
                                    const Calendar& calendar);

}  // namespace quorvi
