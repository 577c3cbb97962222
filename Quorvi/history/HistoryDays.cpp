#include "Quorvi/history/HistoryDays.h"

#include <algorithm>
#include <map>
#include <utility>

namespace quorvi {

std::vector<HistoryDay> historyDays(const HistoryMatches& matches, std::size_t count,
                                    const Calendar& calendar) {
    std::map<Date, HistoryDay, std::greater<>> days;
    for (std::size_t i = 0; i < std::min(count, matches.size()); ++i) {
        const auto start = calendar.startOfDay(matches[i].date);
        auto& day = days[start];
        day.date = start;
        day.entries.push_back(matches[i]);
    }
    std::vector<HistoryDay> result;
    for (auto& [start, day] : days) {
        std::ranges::stable_sort(day.entries, std::greater<>(), &DictationRecord::date);
        result.push_back(std::move(day));
    }
    return result;
}

}  // namespace quorvi
