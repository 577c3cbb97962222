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

// Statistics of the dictations up to an instant. Later records and records without words do not
// count. Sums saturate.
struct UsageSummary {
    static constexpr int usualActivityDays = 84;  // twelve weeks

    std::int64_t totalWords = 0;
    std::int64_t dictationCount = 0;
    double audioSeconds = 0;
    std::int64_t currentStreak = 0;  // consecutive days with dictations up to today or yesterday
    std::int64_t longestStreak = 0;
    std::vector<AppUsage> apps;    // most words first, then by name
    std::vector<DailyUsage> days;  // the last days up to today, oldest first

    static UsageSummary of(const DictationRecords& records, Date now, const Calendar& calendar,
                           int activityDays = usualActivityDays);

    // Rounded, halves away from zero; nullopt if there is no audio.
    std::optional<std::int64_t> wordsPerMinute() const;

    bool operator==(const UsageSummary&) const = default;
};

// Adds up records in their order, on which the rounding of the sums depends.
class UsageCounter {
public:
    explicit UsageCounter(const Calendar& calendar) : calendar_(calendar) {}

    // Takes a record with words that is not in the future.
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
    std::map<Date, ActiveDay> activeDays_;  // by start
    Calendar::Day day_;                     // the last one looked up
    ActiveDay* active_ = nullptr;
};

}  // namespace quorvi
