#include "Quorvi/ui/history/HistoryTexts.h"

#include <gtest/gtest.h>

// Prints a text in a failure; found by argument-dependent lookup.
void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace quorvi::test {
namespace {

// With ordinary spaces instead of non-breaking ones.
std::string plain(const QString& shown) {
    auto text = shown.toStdString();
    for (const std::string space : {"\u00A0", "\u202F"})
        for (auto at = text.find(space); at != text.npos; at = text.find(space))
            text.replace(at, space.size(), " ");
    return text;
}

LocaleFormats in(const char* locale, const char* zone = "Europe/Athens") {
    return LocaleFormats(Calendar(zone, locale));
}

TEST(HistoryTexts, FormatMoneyNumbersAndDatesForTheLocale) {
    const auto afternoon = Date::fromUnixSeconds(1757336700);  // 8 September 2025, 13:05 UTC
    struct Case {
        const char *locale, *cost, *rate, *minutes, *heading, *time, *caption;
    };
    const Case cases[] = {
        {"en_US", "$1,234.50", "$0.0045", "205.76 min · $0.0045/min", "SEPTEMBER 8, 2025",
         "4:05 PM", "1,234 words · 13 sec"},
        {"de_DE", "1.234,50 $", "0,0045 $", "205,76 min · 0,0045 $/min", "8. SEPTEMBER 2025",
         "16:05", "1.234 words · 13 sec"},
        {"el_GR", "1.234,50 $", "0,0045 $", "205,76 min · 0,0045 $/min", "8 ΣΕΠΤΕΜΒΡΙΟΥ 2025",
         "4:05 μ.μ.", "1.234 words · 13 sec"},
        {"ar_EG", "\u200F١٬٢٣٤٫٥٠ US$", "\u200F٠٫٠٠٤٥ US$", "٢٠٥٫٧٦ min · \u200F٠٫٠٠٤٥ US$/min",
         "٨ سبتمبر ٢٠٢٥", "٤:٠٥ م", "١٬٢٣٤ words · ١٣ sec"},
    };
    DictationRecord record{.date = afternoon, .wordCount = 1234, .audioSeconds = 12.5};
    const ModelCostUsage usage{
        {DictationCostEstimate::of(TranscriptionModel::transcribe), false}, 1, 12'345.6};
    for (const auto& c : cases) {
        const auto formats = in(c.locale);
        EXPECT_EQ(plain(texts::costText(1234.5, formats)), c.cost);
        EXPECT_EQ(plain(texts::rateText(0.0045, formats)), c.rate);
        EXPECT_EQ(plain(texts::modelCaption(usage, formats)), c.minutes);
        const auto now = Date::fromUnixSeconds(1760000000);
        EXPECT_EQ(texts::dayHeading(afternoon, now, Calendar("Europe/Athens", c.locale), formats),
                  c.heading);
        EXPECT_EQ(plain(QString::fromStdString(formats.shortTime(afternoon))), c.time);
        EXPECT_EQ(texts::recordCaption(record, formats), c.caption);
    }
}

TEST(HistoryTexts, RoundForDisplayAndCountInSingularAndPlural) {
    const auto formats = in("en_US");
    const auto costOf = [](std::int64_t assumed, std::int64_t named) {
        const auto estimate = DictationCostEstimate::of(TranscriptionModel::transcribe);
        UsageCostSummary cost;
        if (named > 0) cost.models.push_back({{estimate, false}, named, 60});
        if (assumed > 0) cost.models.push_back({{estimate, true}, assumed, 60});
        return cost;
    };
    const UsageSummary usage{
        .totalWords = 150, .audioSeconds = 90, .currentStreak = 3, .longestStreak = 1000};
    const std::pair<QString, const char*> cases[] = {
        {texts::costText(0, formats), "$0.00"},
        {texts::costText(1e-300, formats), "< $0.0001"},
        {texts::costText(0.00015, formats), "$0.0002"},
        {texts::assumptionNote(costOf(1, 3), formats),
         "For 1 older dictation, the model wasn't saved. GPT Transcribe pricing is assumed."},
        {texts::assumptionNote(costOf(2, 0), formats),
         "For 2 older dictations, the model wasn't saved. GPT Transcribe pricing is assumed."},
        {texts::totalCaption(costOf(1, 0), formats), "USD · 1 dictation"},
        {texts::totalCaption(costOf(1200, 34), formats), "USD · 1,234 dictations"},
        {texts::modelName(costOf(1, 0).models[0].id), "GPT Transcribe · older dictations"},
        {texts::speakingTime(-5, formats), "0 sec"},
        {texts::speakingTime(59.9, formats), "59 sec"},
        {texts::speakingTime(3599, formats), "59 min"},
        {texts::speakingTime(7'200'000, formats), "2,000h 0m"},
        {texts::wordsPerMinute({}, formats), "—"},
        {texts::wordsPerMinute(usage, formats), "100"},
        {texts::longestStreak(usage, formats), "Best: 1,000 days · all time"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(text, expected);
}

}  // namespace
}  // namespace quorvi::test
