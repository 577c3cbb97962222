#include "QuorviCore/history/UsageSummary.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quorvi {

namespace {

void increase(std::int64_t& sum, std::int64_t by) {
    if (__builtin_add_overflow(sum, by, &sum)) sum = std::numeric_limits<std::int64_t>::max();
}

}  // namespace

UsageSummary UsageSummary::of(const DictationRecords& records, Date now, const Calendar& calendar,
                              int activityDays) {
    UsageCounter counter(calendar);
    for (const auto& record : records)
        if (record.date <= now && record.wordCount > 0) counter.add(record);
    return counter.summary(now, activityDays);
}

std::optional<std::int64_t> UsageSummary::wordsPerMinute() const {
    if (!(audioSeconds > 0)) return std::nullopt;
    constexpr double limit = 9223372036854775808.0;  // 2 to the power of 63
    const double speed = std::round(static_cast<double>(totalWords) * 60 / audioSeconds);
    return speed < limit ? static_cast<std::int64_t>(speed)
                         : std::numeric_limits<std::int64_t>::max();
}

void UsageCounter::add(const DictationRecord& record) {
    increase(sums_.totalWords, record.wordCount);
    ++sums_.dictationCount;
    sums_.audioSeconds += record.countedSeconds();

    auto& app = apps_.of(record.appName, [](const SharedString& a, const SharedString& b) {
        return a.isSharedWith(b);
    });
    increase(app.words, record.wordCount);
    ++app.dictations;

    if (!active_ || !day_.contains(record.date)) {
        day_ = calendar_.day(record.date);
        active_ = &activeDays_.try_emplace(day_.start, ActiveDay{day_.end, {}}).first->second;
    }
    increase(active_->totals.words, record.wordCount);
    ++active_->totals.dictations;
}

UsageSummary UsageCounter::summary(Date now, int activityDays) const {
    UsageSummary result = sums_;
    for (const auto& [name, totals] : apps_.all())
        result.apps.push_back({name, totals.words, totals.dictations});
    std::ranges::stable_sort(result.apps, [](const AppUsage& a, const AppUsage& b) {
        return a.words != b.words ? a.words > b.words : a.name < b.name;
    });

    auto day = calendar_.day(now);
    for (int n = std::max(activityDays, 1); n > 0; --n) {
        const auto found = activeDays_.find(day.start);
        const auto totals = found == activeDays_.end() ? Totals{} : found->second.totals;
        result.days.push_back({day.start, totals.words, totals.dictations});
        if (n > 1) day = calendar_.dayBefore(day);
    }
    std::ranges::reverse(result.days);
    result.currentStreak = currentStreak(now);
    result.longestStreak = longestStreak();
    return result;
}

std::int64_t UsageCounter::currentStreak(Date now) const {
    auto day = calendar_.day(now);
    if (!activeDays_.contains(day.start)) day = calendar_.dayBefore(day);
    std::int64_t length = 0;
    for (; activeDays_.contains(day.start); day = calendar_.dayBefore(day)) ++length;
    return length;
}

std::int64_t UsageCounter::longestStreak() const {
    std::int64_t longest = 0;
    std::int64_t length = 0;
    std::optional<Date> previousEnd;
    for (const auto& [start, day] : activeDays_) {
        length = previousEnd == start ? length + 1 : 1;
        longest = std::max(longest, length);
        previousEnd = day.end;
    }
    return longest;
}

}  // namespace quorvi
