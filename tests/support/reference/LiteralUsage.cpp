#include "tests/support/reference/LiteralUsage.h"

#include <map>
#include <stdexcept>
#include <string>
#include <tuple>

namespace quorvi::test {

LiteralUsage::LiteralUsage(const Calendar& calendar) {
    UErrorCode status = U_ZERO_ERROR;
    calendar_.reset(icu::Calendar::createInstance(
        icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(calendar.zone())),
        icu::Locale(calendar.locale().c_str()), status));
    if (U_FAILURE(status)) throw std::runtime_error("no calendar");
}

UsageSummary LiteralUsage::summary(const std::vector<DictationRecord>& records, Date now,
                                   int activityDays) {
    UsageSummary result;
    std::map<SharedString, AppUsage> apps;
    std::map<Date, DailyUsage> days;
    const auto add = [](auto& usage, const DictationRecord& record) {
        usage.words += record.wordCount;
        ++usage.dictations;
    };
    for (const auto& record : records) {
        if (record.date > now || record.wordCount <= 0) continue;
        result.totalWords += record.wordCount;
        ++result.dictationCount;
        result.audioSeconds += secondsOf(record);
        add(apps[record.appName], record);
        add(days[startOfDay(record.date)], record);
    }
    for (auto& [name, app] : apps) result.apps.push_back({name, app.words, app.dictations});
    std::ranges::stable_sort(result.apps, std::greater<>(), &AppUsage::words);

    Date day = startOfDay(now);
    for (int i = 0; i < std::max(activityDays, 1); ++i, day = startOfDayBefore(day)) {
        const auto entry = days.contains(day) ? days[day] : DailyUsage{};
        result.days.insert(result.days.begin(), {day, entry.words, entry.dictations});
    }
    day = startOfDay(now);
    if (!days.contains(day)) day = startOfDayBefore(day);
    for (; days.contains(day); day = startOfDayBefore(day)) ++result.currentStreak;
    std::int64_t run = 0;
    Date before{};
    for (const auto& [start, usage] : days) {
        run = run > 0 && startOfDayBefore(start) == before ? run + 1 : 1;
        result.longestStreak = std::max(result.longestStreak, run);
        before = start;
    }
    return result;
}

std::vector<DictationRecord> LiteralUsage::filter(const std::vector<DictationRecord>& records,
                                                  Date from, Date now) {
    std::vector<DictationRecord> result;
    for (const auto& record : records)
        if (record.date >= from && record.date <= now) result.push_back(record);
    return result;
}

UsageCostSummary LiteralUsage::cost(const std::vector<DictationRecord>& records) {
    std::map<std::tuple<std::string, bool, std::string, double>, ModelCostUsage> groups;
    for (const auto& record : records) {
        if (record.wordCount == 0) continue;
        const ModelCostUsage::ID id{
            record.costEstimate.value_or(DictationCostEstimate::of(TranscriptionModel::transcribe)),
            !record.costEstimate};
        auto& group = groups[{id.estimate.modelID.string(), id.assumedModel,
                              id.estimate.pricingDate.string(), id.estimate.usdPerMinute}];
        group.id = id;
        ++group.dictations;
        group.audioSeconds += secondsOf(record);
    }
    UsageCostSummary result;
    for (const auto& [key, group] : groups) result.models.push_back(group);
    std::ranges::stable_sort(result.models, std::greater<>(),
                             [](const auto& group) { return group.usd(); });
    return result;
}

Date LiteralUsage::startOfDay(Date date) {
    UErrorCode status = U_ZERO_ERROR;
    calendar_->setTime(date.unixSeconds() * 1000, status);
    for (const auto field : {UCAL_HOUR_OF_DAY, UCAL_MINUTE, UCAL_SECOND, UCAL_MILLISECOND})
        calendar_->set(field, 0);
    const double time = calendar_->getTime(status);
    if (U_FAILURE(status)) throw std::runtime_error("no date");
    return Date::fromUnixSeconds(time / 1000);
}

}  // namespace quorvi::test
