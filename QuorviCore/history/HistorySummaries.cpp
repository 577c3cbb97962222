#include "QuorviCore/history/HistorySummaries.h"

#include <algorithm>

namespace quorvi {

bool HistorySummaries::isCurrent(const DictationRecords& records, Date now,
                                 const Calendar& calendar) const {
    return records.isSharedWith(records_) && now >= from_ && now < until_ && calendar_ == calendar;
}

const HistorySummaries::Period& HistorySummaries::period(UsagePeriod period,
                                                         const DictationRecords& records, Date now,
                                                         const Calendar& calendar) {
    if (!isCurrent(records, now, calendar)) {
        periods_.clear();
        records_ = records;
        calendar_ = calendar;
        from_ = now;
        until_ = calendar.day(now).end;
        for (const auto& part : records.parts()) {
            if (part.chunk->latest <= now) continue;
            for (const auto& record : part.chunk->records)
                if (record.date > now) until_ = std::min(until_, record.date);
        }
    }
    if (!periods_.contains(period)) count(period, now);
    return periods_.at(period);
}

// One pass for the period and for all time, since every page shows both.
void HistorySummaries::count(UsagePeriod period, Date now) {
    const bool countsAll = !periods_.contains(UsagePeriod::all);
    const auto start = startOf(period, now, *calendar_);
    UsageCounter all(*calendar_);
    UsageCounter chosen(*calendar_);
    UsageCostCounter allCost;
    UsageCostCounter chosenCost;
    for (const auto& part : records_.parts()) {
        if (!countsAll && start && part.chunk->latest < *start) continue;
        for (const auto& record : part.chunk->records) {
            if (record.date > now || record.wordCount == 0) continue;
            const bool isChosen = period != UsagePeriod::all && !(start && record.date < *start);
            if (countsAll) allCost.add(record);
            if (isChosen) chosenCost.add(record);
            if (record.wordCount < 0) continue;
            if (countsAll) all.add(record);
            if (isChosen) chosen.add(record);
        }
    }
    constexpr int days = UsageSummary::usualActivityDays;
    if (countsAll) periods_[UsagePeriod::all] = {all.summary(now, days), allCost.summary()};
    if (period != UsagePeriod::all)
        periods_[period] = {chosen.summary(now, days), chosenCost.summary()};
}

}  // namespace quorvi
