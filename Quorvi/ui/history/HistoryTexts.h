#pragma once

#include <QString>

#include "QuorviCore/history/UsageCost.h"
#include "QuorviCore/history/UsageSummary.h"
#include "QuorviCore/locale/LocaleFormats.h"

// The texts of the history, insights and cost sections, in the user's language, with numbers, money
// and dates formatted for the user's locale.
namespace quorvi::texts {

QString integer(std::int64_t value, const LocaleFormats& formats);
// "1 dictation", "1,234 dictations".
QString dictations(std::int64_t count, const LocaleFormats& formats);
QString words(std::int64_t count, const LocaleFormats& formats);

// The estimated cost.
inline constexpr auto pricingPage = "https://openai.com/api/pricing/";

QString costText(double usd, const LocaleFormats& formats);
QString rateText(double usdPerMinute, const LocaleFormats& formats);
QString totalCaption(const UsageCostSummary& cost, const LocaleFormats& formats);
QString modelName(const ModelCostUsage::ID& id);
// The minutes and the rate.
QString modelCaption(const ModelCostUsage& usage, const LocaleFormats& formats);
QString modelTooltip(const ModelCostUsage& usage);
// Empty when every record names its model.
QString assumptionNote(const UsageCostSummary& cost, const LocaleFormats& formats);

// The insights.
QString speakingTime(double seconds, const LocaleFormats& formats);
QString wordsPerMinute(const UsageSummary& usage, const LocaleFormats& formats);
QString topApps(std::size_t count, const LocaleFormats& formats);  // empty when all are shown
QString currentStreak(const UsageSummary& usage, const LocaleFormats& formats);
QString longestStreak(const UsageSummary& usage, const LocaleFormats& formats);
inline constexpr std::size_t shownApps = 10;

// The list of the dictations.
QString dayHeading(Date date, Date now, const Calendar& calendar, const LocaleFormats& formats);
QString savedDictations(std::size_t count, const LocaleFormats& formats);
QString recordCaption(const DictationRecord& record, const LocaleFormats& formats);

// Whether the list shows only the beginning of the text at first; how long that is.
bool isShortened(const DictationRecord& record);
qsizetype beginningOf(const DictationRecord& record);

}  // namespace quorvi::texts
