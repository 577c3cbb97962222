#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "QuorviCore/history/DictationRecords.h"
#include "QuorviCore/history/Groups.h"
#include "QuorviCore/locale/Calendar.h"

namespace quorvi {

struct AppUsage {
    SharedString name;  // exactly as recorded
    std::int64_t words = 0;
    std::int64_t dictations = 0;

    bool operator==(const AppUsage&) const = default;
};

struct DailyUsage {
    Date date;  // the start of the day
    std::int64_t words = 0;
    std::int64_t dictations = 0;

    bool operator==(const DailyUsage&) const = default;
};

// What has been dictated up to an instant. Records that are later, and those without words, count
// nowhere. Sums that exceed the range stay at its end.
struct UsageSummary {
    static constexpr int usualActivityDays = 84;  // twelve weeks

    std::int64_t totalWords = 0;
    std::int64_t dictationCount = 0;
    double audioSeconds = 0;
    std::int64_t currentStreak = 0;  // days with dictations in a row, up to today or yesterday
    std::int64_t longestStreak = 0;
    std::vector<AppUsage> apps;    // most words first, then by name
    std::vector<DailyUsage> days;  // the last days up to today, oldest first

    static UsageSummary of(const DictationRecords& records, Date now, const Calendar& calendar,
                           int activityDays = usualActivityDays);

    // Rounded, halves away from zero; nothing when no time was spoken.
    std::optional<std::int64_t> wordsPerMinute() const;

    bool operator==(const UsageSummary&) const = default;
};

// Counts records one by one, in their order, since the sum of the seconds depends on it.
class UsageCounter {
public:
    explicit UsageCounter(const Calendar& calendar) : calendar_(calendar) {}

    // A record with words, not later than the instant that is counted up to.
    void add(const DictationRecord& record);
    UsageSummary summary(Date now, int activityDays) const;

private:
    struct Totals {
        std::int64_t words = 0;
        std::int64_t dictations = 0;
    };
    struct ActiveDay {
        Date end;
        Totals totals;
    };
    std::int64_t currentStreak(Date now) const;
    std::int64_t longestStreak() const;

    const Calendar& calendar_;
    UsageSummary sums_;
    Groups<SharedString, Totals> apps_;
    std::map<Date, ActiveDay> activeDays_;  // by their start
    Calendar::Day day_;                     // the last one looked up
    ActiveDay* active_ = nullptr;
};

}  // namespace quorvi
