#include "Quorvi/ui/history/HistoryTexts.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "Quorvi/history/HistoryDays.h"

// How a failed comparison shows a text; found by its class's namespace.
void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace quorvi::test {
namespace {

// Plain spaces in the place of those that don't break.
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

TEST(HistoryTexts, WriteMoneyNumbersAndDatesInTheUsersWay) {
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

TEST(HistoryTexts, RoundMoneyOnlyForDisplay) {
    const auto formats = in("en_US");
    const std::pair<double, const char*> amounts[] = {
        {0, "$0.00"},         {0.00004, "< $0.0001"}, {0.0001, "$0.0001"},
        {0.00015, "$0.0002"}, {0.009, "$0.009"},      {0.1, "$0.10"},
        {1.23456, "$1.2346"}, {-1, "-$1.00"},         {1e-300, "< $0.0001"}};
    for (const auto& [amount, text] : amounts)
        EXPECT_EQ(texts::costText(amount, formats), text) << amount;
    EXPECT_EQ(texts::rateText(0.006, formats), "$0.006");
}

TEST(HistoryTexts, CountInSingularAndPlural) {
    const auto formats = in("en_US");
    const auto costOf = [](std::int64_t assumed, std::int64_t named) {
        const auto estimate = DictationCostEstimate::of(TranscriptionModel::transcribe);
        UsageCostSummary cost;
        if (named > 0) cost.models.push_back({{estimate, false}, named, 60});
        if (assumed > 0) cost.models.push_back({{estimate, true}, assumed, 60});
        return cost;
    };
    EXPECT_EQ(texts::assumptionNote(costOf(1, 3), formats),
              "For 1 older dictation, the model wasn't saved. GPT Transcribe pricing is assumed.");
    EXPECT_EQ(texts::assumptionNote(costOf(2, 0), formats),
              "For 2 older dictations, the model wasn't saved. GPT Transcribe pricing is assumed.");
    EXPECT_EQ(texts::assumptionNote(costOf(0, 2), formats), "");
    EXPECT_EQ(texts::totalCaption(costOf(1, 0), formats), "USD · 1 dictation");
    EXPECT_EQ(texts::totalCaption(costOf(1200, 34), formats), "USD · 1,234 dictations");
    EXPECT_EQ(texts::modelName(costOf(1, 0).models[0].id), "GPT Transcribe · older dictations");
    EXPECT_EQ(texts::modelName({{"gpt-4o-mini-transcribe", 1, ""}, false}),
              "GPT-4o Mini Transcribe");
    EXPECT_EQ(texts::modelName({{"next-model", 1, ""}, false}), "next-model");
    EXPECT_EQ(texts::modelTooltip(costOf(0, 1).models[0]),
              "USD rate checked 2026-09-11. GPT-4o model rates are approximate per-minute "
              "equivalents.");
    EXPECT_EQ(texts::savedDictations(1234, formats), "1,234 saved dictations");
    EXPECT_EQ(texts::topApps(11, formats), "Top 10 of 11 apps");
    EXPECT_EQ(texts::topApps(10, formats), "");

    const std::pair<double, const char*> spoken[] = {
        {0, "0 sec"},     {59.9, "59 sec"}, {60, "1 min"},
        {3599, "59 min"}, {3725, "1h 2m"},  {3'600'000 * 2.0, "2,000h 0m"},
        {-5, "0 sec"}};
    for (const auto& [seconds, text] : spoken)
        EXPECT_EQ(texts::speakingTime(seconds, formats), text) << seconds;
    UsageSummary usage;
    EXPECT_EQ(texts::wordsPerMinute(usage, formats), "—");
    usage = {.totalWords = 150, .audioSeconds = 90, .currentStreak = 3, .longestStreak = 1000};
    EXPECT_EQ(texts::wordsPerMinute(usage, formats), "100");
    EXPECT_EQ(texts::currentStreak(usage, formats), "3-day streak");
    EXPECT_EQ(texts::longestStreak(usage, formats), "Best: 1,000 days · all time");
}

TEST(HistoryTexts, SortMatchesIntoDays) {
    const Calendar kolkata("Asia/Kolkata", "en_US");
    const auto formats = LocaleFormats(kolkata);
    const auto midnight = kolkata.startOfDay(Date::fromUnixSeconds(1760000000));
    const auto at = [&](double minutes) {
        return Date{midnight.secondsSinceReferenceDate + minutes * 60};
    };
    std::vector<DictationRecord> records;
    for (const double minutes : {1.0, -1.0, 5.0, -1440.0, -1441.0, -2.0}) {
        records.push_back({.date = at(minutes), .text = "x"});
        records.back().wordCount = static_cast<std::int64_t>(minutes);
    }
    HistoryIndex index;
    index.update(DictationRecords(records));
    const auto matches = index.find("", HistoryIndex::Among::texts);
    std::string shown;
    for (const auto& day : historyDays(matches, 5, kolkata)) {
        shown += texts::dayHeading(day.date, at(30), kolkata, formats).toStdString() + ":";
        for (const auto& entry : day.entries) shown += " " + std::to_string(entry.wordCount);
        shown += "\n";
    }
    EXPECT_EQ(shown, "TODAY: 5 1\nYESTERDAY: -1 -1440\nOCTOBER 7, 2025: -1441\n");

    const auto lengthOf = [](std::size_t count, const char* character) {
        std::string text;
        for (; count > 0; --count) text += character;
        return texts::isShortened({.text = text});
    };
    for (const auto* character : {"x", "é", "👩‍👩‍👧"}) {
        EXPECT_FALSE(lengthOf(350, character));
        EXPECT_TRUE(lengthOf(351, character));
    }
}

}  // namespace
}  // namespace quorvi::test
