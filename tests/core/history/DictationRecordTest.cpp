#include <gtest/gtest.h>

#include <algorithm>

#include "QuorviCore/history/DictationRecords.h"
#include "QuorviCore/history/HistoryIndex.h"
#include "tests/support/Texts.h"
#include "tests/support/reference/GeneratedHistory.h"

namespace quorvi::test {
namespace {

DictationRecord recordOf(std::string_view text, std::string_view app = "Mail",
                         bool keepText = true) {
    return DictationRecord::make(Uuid::random(), {0}, text, 1, app, "automatic", keepText,
                                 std::nullopt);
}

TEST(DictationRecord, CountsWordsAsAReaderWould) {
    for (const auto& [text, count] : {std::pair("' ’ ...", 0),
                                      {"", 0},
                                      {"x++", 1},
                                      {"cafe\u0301s", 1},
                                      {"日本語", 1},
                                      {"Don't stop", 2},
                                      {"e-mail 3.14", 4},
                                      {"Καλημέρα κόσμε", 2},
                                      {"a\u200Db👩‍👩‍👧c", 2},
                                      {"हिन्दी में", 2},
                                      {"٣٤ Ⅷ ½", 3},
                                      {"’tis rock ’n’ roll", 4},
                                      {"one\ntwo\r\nthree\u00A0four", 4}})
        EXPECT_EQ(DictationRecord::countWords(text), count) << text;
}

TEST(DictationRecord, IsFoundWithoutRegardToCaseAndDiacritics) {
    for (const auto& [text, query] : {std::pair("Café", "cafe"),
                                      {"cafe", "CAFÉ"},
                                      {"Cafe\u0301", "é"},
                                      {"ΣΊΣΥΦΟΣ", "σίσυφος"},
                                      {"Straße", "STRASSE"},
                                      {"İstanbul", "istanbul"},
                                      {"anything", "  "},
                                      {"anything", "\u0301"},
                                      {"an email", "n e"},
                                      {"", "NOTE"},
                                      {"한국어", "한국"}})
        EXPECT_TRUE(recordOf(text, "Notes").matches(query)) << text << " / " << query;
    for (const auto& [text, query] :
         {std::pair("email", " mail"), {"mail", "mailnotes"}, {"한국어", "ㅎ"}})
        EXPECT_FALSE(recordOf(text, "Notes").matches(query)) << text << " / " << query;
    EXPECT_TRUE(recordOf("kept nowhere", "Mail", false).matches("mAil"));
    EXPECT_FALSE(recordOf("kept nowhere", "Mail", false).matches("kept"));
}

TEST(HistoryIndex, AnswersAsEachRecordDoesAlsoAfterChanges) {
    std::mt19937 random(2);
    HostileTexts some(random);
    std::vector<DictationRecord> all;
    for (int i = 0; i < 700; ++i) {
        if (i % 8 == 0) some = HostileTexts(random);
        all.push_back(recordOf(some(60), some(3), random() % 5 != 0));
    }
    DictationRecords records(all);
    HistoryIndex index;
    for (int round = 0; round < 120; ++round) {
        if (round % 4 == 1) records = records.prepending(recordOf(some(40)));
        if (round % 4 == 3) records = records.without(records[random() % records.size()].id);
        index.update(records);
        const auto query = HostileTexts(random)(4);
        for (const auto among : {HistoryIndex::Among::records, HistoryIndex::Among::texts}) {
            std::vector<std::uint32_t> expected;
            for (std::uint32_t n = 0; n < records.size(); ++n)
                if ((among == HistoryIndex::Among::records || records[n].text) &&
                    records[n].matches(query))
                    expected.push_back(n);
            EXPECT_EQ(index.find(query, among).positions, expected) << query;
        }
    }
}

// Compares the list with a plain vector through random changes.
TEST(DictationRecords, ChangeLikeAPlainListAndShareTheRest) {
    std::mt19937 random(3);
    auto plain = GeneratedHistory(1'000).take();
    DictationRecords records(plain);
    const auto same = [&] {
        return std::equal(records.begin(), records.end(), plain.begin(), plain.end()) &&
               records == DictationRecords(plain);
    };
    const auto prepend = [&](double date) {
        plain.insert(plain.begin(), recordOf("new"));
        plain.front().date = {date};
        records = records.prepending(plain.front());
    };
    ASSERT_TRUE(same());
    for (int round = 0; round < 300; ++round) {
        const auto before = records;
        const auto copy = plain;
        const auto [id, date] =
            std::pair(plain[random() % plain.size()].id, plain[random() % plain.size()].date);
        const auto kind = random() % 6;
        if (kind == 0) {
            std::erase_if(plain, [&](const auto& r) { return r.id == id; });
            records = records.without(id);
        } else if (kind == 1 && round % 8 == 0) {
            for (auto& r : plain)
                if (r.date < date) r.text.reset();
            records = records.withoutTextBefore(date);
        } else if (kind == 2 && plain.size() >= 500) {
            std::erase_if(plain, [&](const auto& r) { return r.date > date; });
            records = records.between({-1e300}, date);
        } else if (kind == 3) {
            std::ranges::stable_sort(plain, std::greater<>(), &DictationRecord::date);
            records = records.newestFirst();
        } else {
            prepend(date.secondsSinceReferenceDate + random() % 999);
        }
        ASSERT_TRUE(same()) << round;
        ASSERT_TRUE(std::equal(before.begin(), before.end(), copy.begin(), copy.end()));
        ASSERT_EQ(records[plain.size() / 2], plain[plain.size() / 2]);
        while (plain.size() < 300) prepend(0);
    }
    EXPECT_TRUE(records.without(Uuid{}).isSharedWith(records));
    EXPECT_TRUE(records.withoutTextBefore({-1e300}).isSharedWith(records));
    EXPECT_EQ(records.prepending(recordOf("x")).parts().back().chunk, records.parts().back().chunk);
}

}  // namespace
}  // namespace quorvi::test
