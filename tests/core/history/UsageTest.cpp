#include <gtest/gtest.h>

#include <random>

#include "QuorviCore/history/HistorySummaries.h"
#include "QuorviCore/history/TranscriptRetention.h"
#include "tests/support/reference/GeneratedHistory.h"
#include "tests/support/reference/LiteralUsage.h"

namespace quorvi::test {
namespace {

const Calendar utc("UTC", "en_US");

// Days since 2001-01-01 in UTC, and seconds.
Date day(double days, double seconds = 0) {
    return {days * 86'400 + seconds};
}

DictationRecord spoken(Date date, std::int64_t words = 10, const char* app = "Mail",
                       double seconds = 60) {
    DictationRecord record{.date = date, .text = "some text"};
    record.wordCount = words;
    record.audioSeconds = seconds;
    record.appName = app;
    return record;
}

struct Place {
    const char* zone;
    double unixSeconds;  // near an unusual clock change
};

constexpr Place places[] = {
    {"Europe/Athens", 1774746000},        // forward, 29 March 2026
    {"America/New_York", 1793512800},     // back, 1 November 2026
    {"Asia/Kolkata", 1775000000},         // half an hour
    {"Australia/Lord_Howe", 1775314800},  // back by half an hour
    {"Pacific/Apia", 1325239200},         // without 30 December 2011
    {"Africa/Cairo", 1777000000},         // midnight skipped, 24 April 2026
    {"America/Havana", 1772946000},       // midnight skipped, 8 March 2026
    {"Asia/Beirut", 1774734000},          // midnight skipped, 29 March 2026
    {"Africa/Cairo", 1793300000},         // midnight twice, October 2026
};

TEST(Calendar, CountsMonthsAsTheLocaleDoes) {
    const auto date = day(9'210, 50'000);  // 21 March 2026
    EXPECT_EQ(Calendar("UTC", "de_DE").startOfMonth(date), day(9'190));
    EXPECT_EQ(Calendar("UTC", "fa_IR").startOfMonth(date), day(9'210)) << "1 Farvardin";
}

TEST(Calendar, StartsADayAtTheFirstOfTwoMidnights) {
    for (const auto& [zone, first] : {std::pair("America/Havana", 1793505600),  // 1 November 2026
                                      {"America/St_Johns", 1289097000}}) {      // 7 November 2010
        const Calendar calendar(zone, "en_US");
        for (const int later : {0, 1'800, 3'599, 3'600, 89'999}) {
            const auto found = calendar.day(Date::fromUnixSeconds(first + later));
            EXPECT_EQ(found.start, Date::fromUnixSeconds(first)) << zone << " " << later;
            EXPECT_EQ(found.end, Date::fromUnixSeconds(first + 90'000)) << zone << " " << later;
        }
    }
}

TEST(TranscriptRetention, CountsCalendarDays) {
    // 31 March 2026 at noon in Athens; the clocks went forward on the 29th.
    const auto now = Date::fromUnixSeconds(1774947600);
    const auto noonOnTheFirst = now.secondsSinceReferenceDate - 30 * 86'400 + 3600;
    const DictationRecords records({spoken({noonOnTheFirst}), spoken({noonOnTheFirst - 60})});
    const auto kept = applyingRetention(records, TranscriptRetention::thirtyDays, now,
                                        Calendar("Europe/Athens", "en_US"));
    EXPECT_TRUE(kept[0].text && !kept[1].text);
}

// Compares with a calendar calculation for each record, in every zone and around every kind of
// clock change.
TEST(UsageSummary, IsWhatTheLiteralCalendarSays) {
    std::mt19937 random(5);
    HistorySummaries summaries;  // caches through all changes
    for (const auto& place : places) {
        const Calendar calendar(place.zone, "en_US");
        LiteralUsage literal(calendar);
        auto newest = Date::fromUnixSeconds(place.unixSeconds + 5 * 86'400);
        auto records = GeneratedHistory(1'500, newest, static_cast<unsigned>(random())).take();
        for (int i = 0; i < 40; ++i) {
            records[random() % records.size()].wordCount = 0;
            records[random() % records.size()].audioSeconds = -5;
            records[random() % records.size()].appName = "";
            records[random() % records.size()].costEstimate = {"x", 0.01, "2025-01-01"};
        }
        DictationRecords list(records);
        for (int i = 0; i < 12; ++i) {
            // Some of the records may be in the future, and one is just becoming present.
            Date now{newest.secondsSinceReferenceDate - random() % (12 * 86'400)};
            if (i % 3 == 0) now = records[random() % 600].date;
            if (i == 6) {
                records.insert(records.begin(), spoken(newest));
                list = list.prepending(records.front());
            }
            EXPECT_EQ(UsageSummary::of(list, now, calendar, 20), literal.summary(records, now, 20))
                << place.zone;
            for (const auto period : allUsagePeriods) {
                const auto chosen = literal.filter(
                    records, startOf(period, now, calendar).value_or(Date{-1e300}), now);
                const DictationRecords expected(chosen);
                EXPECT_TRUE(filter(period, list, now, calendar) == expected);
                const auto& shown = summaries.period(period, list, now, calendar);
                EXPECT_EQ(shown.usage, literal.summary(chosen, now, 84)) << place.zone;
                EXPECT_EQ(shown.cost, literal.cost(chosen));
                EXPECT_EQ(UsageCostSummary::of(list, period, now, calendar), shown.cost);
            }
        }
    }
}

TEST(UsageSummary, SurvivesAbsurdNumbersAndRoundsTheSpeed) {
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    const DictationRecords records({spoken(day(1), most, "a", 1e308),
                                    spoken(day(1), most, "a", 1e308), spoken({-1e300}, 5, "b", -3),
                                    spoken({1e300}, 5)});
    auto usage = UsageSummary::of(records, day(2), utc);
    EXPECT_EQ(usage.totalWords, most);
    EXPECT_EQ(usage.dictationCount, 3);
    EXPECT_EQ(usage.wordsPerMinute(), 0);
    EXPECT_GE(UsageCostSummary::of(records, UsagePeriod::all, day(2), utc).totalUSD(), 0);
    EXPECT_EQ((DictationCostEstimate{"x", -1, "y"}.usd(60)), 0);
    EXPECT_DOUBLE_EQ(DictationCostEstimate::of(TranscriptionModel::fourO).usd(90), 0.009);
    for (const auto& [words, seconds, speed] :
         {std::tuple(150, 90.0, 100), {1, 0.8, 75}, {7, 120.0, 4}}) {
        usage.totalWords = words;
        usage.audioSeconds = seconds;
        EXPECT_EQ(usage.wordsPerMinute(), speed);
    }
    usage.audioSeconds = 0;
    EXPECT_EQ(usage.wordsPerMinute(), std::nullopt);
}

}  // namespace
}  // namespace quorvi::test
