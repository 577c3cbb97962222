#include "Quorvi/history/HistoryTexts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

#include "QuorviCore/text/Text.h"

namespace quorvi::texts {

namespace {

// Less than this is shown as less than this.
constexpr double smallestAmount = 0.0001;

// Characters of a text that are always shown in full.
constexpr std::size_t alwaysShown = 350;

std::string dictationNoun(std::int64_t count) {
    return count == 1 ? "dictation" : "dictations";
}

// Without the fraction; an impossible number of seconds is the greatest one.
std::int64_t whole(double seconds) {
    constexpr double greatest = 1e15;
    return static_cast<std::int64_t>(std::clamp(seconds, 0.0, greatest));
}

}  // namespace

std::string dictations(std::int64_t count, const LocaleFormats& formats) {
    return formats.integer(count) + " " + dictationNoun(count);
}

std::string costText(double usd, const LocaleFormats& formats) {
    if (usd > 0 && usd < smallestAmount) return "< " + formats.usd(smallestAmount, 4, 4);
    return formats.usd(usd, 2, 4);
}

std::string rateText(double usdPerMinute, const LocaleFormats& formats) {
    return formats.usd(usdPerMinute, 3, 4);
}

std::string totalCaption(const UsageCostSummary& cost, const LocaleFormats& formats) {
    return "USD · " + dictations(cost.dictations(), formats);
}

std::string modelName(const ModelCostUsage::ID& id) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 3> names{{
        {"gpt-transcribe", "GPT Transcribe"},
        {"gpt-4o-transcribe", "GPT-4o Transcribe"},
        {"gpt-4o-mini-transcribe", "GPT-4o Mini Transcribe"},
    }};
    const auto known =
        std::ranges::find(names, id.estimate.modelID.view(), [](const auto& n) { return n.first; });
    std::string name(known == names.end() ? id.estimate.modelID.view() : known->second);
    return id.assumedModel ? name + " · older dictations" : name;
}

std::string modelCaption(const ModelCostUsage& usage, const LocaleFormats& formats) {
    return formats.decimal(usage.audioSeconds / 60, 2, 2) + " min · " +
           rateText(usage.id.estimate.usdPerMinute, formats) + "/min";
}

std::string modelTooltip(const ModelCostUsage& usage) {
    return "USD rate checked " + usage.id.estimate.pricingDate.string() +
           ". GPT-4o model rates are approximate per-minute equivalents.";
}

std::string assumptionNote(const UsageCostSummary& cost, const LocaleFormats& formats) {
    const auto count = cost.assumedDictations();
    if (count == 0) return {};
    return "For " + formats.integer(count) + " older " + dictationNoun(count) +
           ", the model wasn't saved. GPT Transcribe pricing is assumed.";
}

std::string speakingTime(double seconds, const LocaleFormats& formats) {
    const auto total = whole(seconds);
    if (total < 60) return formats.integer(total) + " sec";
    if (total < 3600) return formats.integer(total / 60) + " min";
    return formats.integer(total / 3600) + "h " + formats.integer(total % 3600 / 60) + "m";
}

std::string wordsPerMinute(const UsageSummary& usage, const LocaleFormats& formats) {
    const auto speed = usage.wordsPerMinute();
    return speed ? formats.integer(*speed) : "—";
}

std::string topApps(std::size_t count, const LocaleFormats& formats) {
    if (count <= shownApps) return {};
    return "Top " + formats.integer(shownApps) + " of " +
           formats.integer(static_cast<std::int64_t>(count)) + " apps";
}

std::string currentStreak(const UsageSummary& usage, const LocaleFormats& formats) {
    return formats.integer(usage.currentStreak) + "-day streak";
}

std::string longestStreak(const UsageSummary& usage, const LocaleFormats& formats) {
    return "Best: " + formats.integer(usage.longestStreak) + " days · all time";
}

std::string dayHeading(Date date, Date now, const Calendar& calendar,
                       const LocaleFormats& formats) {
    const auto today = calendar.day(now);
    if (today.contains(date)) return "TODAY";
    if (calendar.dayBefore(today).contains(date)) return "YESTERDAY";
    return formats.upperCased(formats.longDate(date));
}

std::string savedDictations(std::size_t count, const LocaleFormats& formats) {
    return formats.integer(static_cast<std::int64_t>(count)) + " saved dictations";
}

std::string recordCaption(const DictationRecord& record, const LocaleFormats& formats) {
    return formats.integer(record.wordCount) + " words · " +
           formats.integer(whole(std::round(record.countedSeconds()))) + " sec";
}

bool isShortened(const DictationRecord& record) {
    return record.text && record.text->size() > alwaysShown &&
           text::firstCharacters(*record.text, alwaysShown).size() < record.text->size();
}

}  // namespace quorvi::texts

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
