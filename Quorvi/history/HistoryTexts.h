#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/history/HistoryIndex.h"
#include "QuorviCore/history/UsageCost.h"
#include "QuorviCore/history/UsageSummary.h"
#include "QuorviCore/locale/LocaleFormats.h"

// What the pages say about the history, as plain text. Pure; numbers, money and dates are written
// in the user's way, sentences in English.
namespace quorvi::texts {

// "1 dictation", "1,234 dictations".
std::string dictations(std::int64_t count, const LocaleFormats& formats);

// The estimated cost.
inline constexpr std::string_view costTitle = "Estimated API cost";
inline constexpr std::string_view noCost = "No completed dictations in this period.";
inline constexpr std::string_view costNote =
    "Estimate before tax for completed dictations in your Quorvi history, including synced Macs. "
    "Deleted dictations, failed or cancelled requests, and usage in other apps are excluded. "
    "Actual charges may differ.";
inline constexpr std::string_view pricingLink = "OpenAI pricing ↗";
inline constexpr std::string_view pricingPage = "https://openai.com/api/pricing/";

std::string costText(double usd, const LocaleFormats& formats);
std::string rateText(double usdPerMinute, const LocaleFormats& formats);
std::string totalCaption(const UsageCostSummary& cost, const LocaleFormats& formats);
std::string modelName(const ModelCostUsage::ID& id);
// The minutes and the rate.
std::string modelCaption(const ModelCostUsage& usage, const LocaleFormats& formats);
std::string modelTooltip(const ModelCostUsage& usage);
// Empty when every record names its model.
std::string assumptionNote(const UsageCostSummary& cost, const LocaleFormats& formats);

// The insights.
std::string speakingTime(double seconds, const LocaleFormats& formats);
std::string wordsPerMinute(const UsageSummary& usage, const LocaleFormats& formats);
std::string topApps(std::size_t count, const LocaleFormats& formats);  // empty when all are shown
std::string currentStreak(const UsageSummary& usage, const LocaleFormats& formats);
std::string longestStreak(const UsageSummary& usage, const LocaleFormats& formats);
inline constexpr std::size_t shownApps = 10;

// The list of the dictations.
std::string dayHeading(Date date, Date now, const Calendar& calendar, const LocaleFormats& formats);
std::string savedDictations(std::size_t count, const LocaleFormats& formats);
std::string recordCaption(const DictationRecord& record, const LocaleFormats& formats);

// A text of which only the beginning is shown at first.
bool isShortened(const DictationRecord& record);

}  // namespace quorvi::texts

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
