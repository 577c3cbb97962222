#include "Quorvi/ui/history/HistoryTexts.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "Quorvi/ui/design/Texts.h"
#include "QuorviCore/text/Text.h"

namespace quorvi::texts {

namespace {

struct HistoryTexts {
    Q_DECLARE_TR_FUNCTIONS(HistoryTexts)
};

// Smaller amounts are shown as "< $0.0001".
constexpr double smallestAmount = 0.0001;

// The longest text that is shown in full, and the length that longer ones are cut to.
constexpr std::size_t alwaysShown = 350;
constexpr std::size_t shownOfLonger = 280;

// The number by which tr() chooses the plural.
int forPlural(std::int64_t count) {
    return static_cast<int>(std::clamp<std::int64_t>(count, 0, std::numeric_limits<int>::max()));
}

// Rounds down; clamps what does not fit.
std::int64_t whole(double seconds) {
    constexpr double greatest = 1e15;
    return static_cast<std::int64_t>(std::clamp(seconds, 0.0, greatest));
}

QString usd(double amount, int fewest, int most, const LocaleFormats& formats) {
    return qt(formats.usd(amount, fewest, most));
}

}  // namespace

QString integer(std::int64_t value, const LocaleFormats& formats) {
    return qt(formats.integer(value));
}

QString dictations(std::int64_t count, const LocaleFormats& formats) {
    const auto text = count == 1 ? HistoryTexts::tr("%1 dictation")
                                 : HistoryTexts::tr("%1 dictations", nullptr, forPlural(count));
    return text.arg(integer(count, formats));
}

QString words(std::int64_t count, const LocaleFormats& formats) {
    return HistoryTexts::tr("%1 words", nullptr, forPlural(count)).arg(integer(count, formats));
}

QString costText(double amount, const LocaleFormats& formats) {
    if (amount > 0 && amount < smallestAmount)
        return QStringLiteral("< ") + usd(smallestAmount, 4, 4, formats);
    return usd(amount, 2, 4, formats);
}

QString rateText(double usdPerMinute, const LocaleFormats& formats) {
    return usd(usdPerMinute, 3, 4, formats);
}

QString totalCaption(const UsageCostSummary& cost, const LocaleFormats& formats) {
    return QStringLiteral("USD · ") + dictations(cost.dictations(), formats);
}

QString modelName(const ModelCostUsage::ID& id) {
    if (id.estimate.modelID.view() == DictationCostEstimate::offlineModel)
        return HistoryTexts::tr("Offline recogniser");
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 3> names{{
        {"gpt-transcribe", "GPT Transcribe"},
        {"gpt-4o-transcribe", "GPT-4o Transcribe"},
        {"gpt-4o-mini-transcribe", "GPT-4o Mini Transcribe"},
    }};
    const auto known =
        std::ranges::find(names, id.estimate.modelID.view(), [](const auto& n) { return n.first; });
    const auto name = qt(known == names.end() ? id.estimate.modelID.view() : known->second);
    return id.assumedModel ? HistoryTexts::tr("%1 · older dictations").arg(name) : name;
}

QString modelCaption(const ModelCostUsage& usage, const LocaleFormats& formats) {
    if (!usage.id.estimate.isKnown())
        return HistoryTexts::tr("%1 min · not estimated")
            .arg(qt(formats.decimal(usage.audioSeconds / 60, 2, 2)));
    return HistoryTexts::tr("%1 min · %2/min")
        .arg(qt(formats.decimal(usage.audioSeconds / 60, 2, 2)),
             rateText(usage.id.estimate.usdPerMinute, formats));
}

QString modelTooltip(const ModelCostUsage& usage) {
    if (!usage.id.estimate.isKnown()) return {};
    return HistoryTexts::tr(
               "USD rate checked %1. GPT-4o model rates are approximate per-minute equivalents.")
        .arg(qt(usage.id.estimate.pricingDate.view()));
}

QString assumptionNote(const UsageCostSummary& cost, const LocaleFormats& formats) {
    const auto count = cost.assumedDictations();
    if (count == 0) return {};
    const auto text = count == 1 ? HistoryTexts::tr(
                                       "For %1 older dictation, the model wasn't saved. GPT "
                                       "Transcribe pricing is assumed.")
                                 : HistoryTexts::tr(
                                       "For %1 older dictations, the model wasn't saved. GPT "
                                       "Transcribe pricing is assumed.",
                                       nullptr, forPlural(count));
    return text.arg(integer(count, formats));
}

QString speakingTime(double seconds, const LocaleFormats& formats) {
    const auto total = whole(seconds);
    if (total < 60) return HistoryTexts::tr("%1 sec").arg(integer(total, formats));
    if (total < 3600) return HistoryTexts::tr("%1 min").arg(integer(total / 60, formats));
    return HistoryTexts::tr("%1h %2m").arg(integer(total / 3600, formats),
                                           integer(total % 3600 / 60, formats));
}

QString wordsPerMinute(const UsageSummary& usage, const LocaleFormats& formats) {
    const auto speed = usage.wordsPerMinute();
    return speed ? integer(*speed, formats) : QStringLiteral("—");
}

QString topApps(std::size_t count, const LocaleFormats& formats) {
    if (count <= shownApps) return {};
    return HistoryTexts::tr("Top %1 of %2 apps")
        .arg(integer(shownApps, formats), integer(static_cast<std::int64_t>(count), formats));
}

QString currentStreak(const UsageSummary& usage, const LocaleFormats& formats) {
    return HistoryTexts::tr("%1-day streak", nullptr, forPlural(usage.currentStreak))
        .arg(integer(usage.currentStreak, formats));
}

QString longestStreak(const UsageSummary& usage, const LocaleFormats& formats) {
    return HistoryTexts::tr("Best: %1 days · all time", nullptr, forPlural(usage.longestStreak))
        .arg(integer(usage.longestStreak, formats));
}

QString dayHeading(Date date, Date now, const Calendar& calendar, const LocaleFormats& formats) {
    const auto today = calendar.day(now);
    if (today.contains(date)) return HistoryTexts::tr("TODAY");
    if (calendar.dayBefore(today).contains(date)) return HistoryTexts::tr("YESTERDAY");
    return qt(formats.upperCased(formats.longDate(date)));
}

QString savedDictations(std::size_t count, const LocaleFormats& formats) {
    const auto number = static_cast<std::int64_t>(count);
    return HistoryTexts::tr("%1 saved dictations", nullptr, forPlural(number))
        .arg(integer(number, formats));
}

QString recordCaption(const DictationRecord& record, const LocaleFormats& formats) {
    return HistoryTexts::tr("%1 words · %2 sec", nullptr, forPlural(record.wordCount))
        .arg(integer(record.wordCount, formats),
             integer(whole(std::round(record.countedSeconds())), formats));
}

bool isShortened(const DictationRecord& record) {
    return record.text && record.text->size() > alwaysShown &&
           text::hasMoreCharacters(*record.text, alwaysShown);
}

qsizetype beginningOf(const DictationRecord& record) {
    const auto shown = qt(text::firstCharacters(*record.text, shownOfLonger));
    // Cuts at a word boundary, unless the word is very long.
    const auto space = shown.lastIndexOf(QLatin1Char(' '));
    return space > shown.size() / 2 ? space : shown.size();
}

}  // namespace quorvi::texts
