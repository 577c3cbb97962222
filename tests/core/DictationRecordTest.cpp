#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "QuorviCore/async/Task.h"
#include "QuorviCore/history/DictationRecords.h"
#include "QuorviCore/history/HistoryIndex.h"
#include "QuorviCore/text/Folding.h"
#include "tests/support/GeneratedHistory.h"

namespace quorvi::test {
namespace {

DictationRecord recordOf(std::string_view text, std::string_view app = "Mail", bool keepText = true,
                         double seconds = 1) {
    return DictationRecord::make(Uuid::random(), {0}, text, seconds, app, "automatic", keepText,
                                 std::nullopt);
}

TEST(DictationRecord, CountsTheWordsOfATextThatIsNotKeptAndTakesNoDurationThatIsNone) {
    const auto record = recordOf("two words", "Mail", false, -1);
    EXPECT_EQ(record.wordCount, 2);
    EXPECT_FALSE(record.text);
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double seconds : {-1.0, -0.0, infinity, -infinity, std::nan("")})
        EXPECT_EQ(recordOf("x", "", true, seconds).audioSeconds, 0) << seconds;
    EXPECT_EQ(recordOf("x", "", true, 1.5).audioSeconds, 1.5);
}

TEST(DictationRecord, CountsWordsAsAReaderWould) {
    const std::pair<const char*, int> cases[] = {
        {"Don't stop", 2},
        {"e-mail", 2},
        {"3.14", 2},
        {"x++", 1},
        {"Καλημέρα κόσμε", 2},
        {"' ’", 0},
        {"", 0},
        {"...", 0},
        {"’tis rock ’n’ roll", 4},
        {"cafe\u0301s", 1},
        {"٣٤ Ⅷ ½", 3},
        {"日本語", 1},
        {"a\u200Db👩‍👩‍👧c", 2},
        {"one\ntwo\r\nthree\u00A0four", 4},
        {"हिन्दी में", 2},
    };
    for (const auto& [text, count] : cases)
        EXPECT_EQ(DictationRecord::countWords(text), count) << text;
}

TEST(DictationRecord, IsFoundWithoutRegardToCaseAndDiacritics) {
    struct Case {
        const char *text, *app, *query;
        bool found;
    };
    const Case cases[] = {
        {"Café", "", "cafe", true},       {"cafe", "", "CAFÉ", true},
        {"Cafe\u0301", "", "é", true},    {"ΣΊΣΥΦΟΣ", "", "σίσυφος", true},
        {"Straße", "", "STRASSE", true},  {"İstanbul", "", "istanbul", true},
        {"anything", "", "  ", true},     {"email", "", " mail", false},
        {"an email", "", "n e", true},    {"", "Mail", "MAIL", true},
        {"mail", "Notes", "note", true},  {"mail", "Notes", "mailnotes", false},
        {"anything", "", "\u0301", true}, {"한국어", "", "한국", true},
        {"한국어", "", "ㅎ", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(recordOf(c.text, c.app).matches(c.query), c.found) << c.text << " / " << c.query;
    EXPECT_TRUE(recordOf("kept nowhere", "Mail", false).matches("mAil"));
    EXPECT_FALSE(recordOf("kept nowhere", "Mail", false).matches("kept"));
}

// Pieces of text that fold in every way there is.
std::string randomText(std::mt19937& random, int pieces) {
    static const char* const parts[] = {
        "a", "A",  "é",  "e\u0301", "Σ",  "ς",      "ΐ",      "ß", "ẞ", "İ",     "ı",
        "ﬁ", "한", "ᄒ", "ᅡ",      "ᆫ", " ",      "\n",     "’", "…", "🙂",  "\u0323",
        "ᾳ", "Å",  "क",  "ि",       "़",   "\u2000", "\u212B", "ŉ", "ǰ", "\u0345"};
    std::string text;
    for (int i = 0; i < pieces; ++i) text += parts[random() % std::size(parts)];
    return text;
}

TEST(SearchFolding, AgreesWithFoldingTheWholeText) {
    for (char32_t c = 1; c < 0x3400; ++c) {
        std::string one;
        if (c >= 0x800) one += static_cast<char>(0xE0 | c >> 12);
        if (c >= 0x80)
            one += static_cast<char>(c >= 0x800 ? 0x80 | (c >> 6 & 0x3F) : 0xC0 | c >> 6);
        one += static_cast<char>(c >= 0x80 ? 0x80 | (c & 0x3F) : c);
        ASSERT_EQ(text::searchFolded(one), text::caseFolded(text::withoutDiacritics(one)))
            << std::hex << static_cast<unsigned>(c);
    }
    std::mt19937 random(1);
    for (int i = 0; i < 20'000; ++i) {
        const auto s = randomText(random, 8);
        ASSERT_EQ(text::searchFolded(s), text::caseFolded(text::withoutDiacritics(s))) << s;
    }
}

TEST(HistoryIndex, AnswersAsEachRecordDoesAlsoAfterChanges) {
    std::mt19937 random(2);
    std::vector<DictationRecord> all;
    for (int i = 0; i < 700; ++i)
        all.push_back(recordOf(randomText(random, static_cast<int>(random() % 60)),
                               randomText(random, 2), random() % 5 != 0));
    DictationRecords records(all);
    HistoryIndex index;
    for (int round = 0; round < 40; ++round) {
        if (round % 4 == 1) records = records.prepending(recordOf(randomText(random, 40)));
        if (round % 4 == 3) records = records.without(records[random() % records.size()].id);
        index.update(records);
        const auto query = randomText(random, 1 + static_cast<int>(random() % 3));
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

TEST(HistoryIndex, GoesOnWhereAnUpdateWasStopped) {
    const DictationRecords records(GeneratedHistory(600).take());
    HistoryIndex index;
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(index.update(records, stop.get_token()), Cancelled);
    EXPECT_EQ(index.find("the", HistoryIndex::Among::texts).size(), 0u);
    index.update(records);
    EXPECT_GT(index.find("the", HistoryIndex::Among::texts).size(), 300u);
    EXPECT_THROW(index.find("the", HistoryIndex::Among::texts, stop.get_token()), Cancelled);
}

// The list against a plain one, through random changes.
TEST(DictationRecords, ChangeLikeAPlainListAndShareTheRest) {
    std::mt19937 random(3);
    auto plain = GeneratedHistory(1'000).take();
    DictationRecords records(plain);
    const auto same = [&] {
        return std::equal(records.begin(), records.end(), plain.begin(), plain.end()) &&
               records == DictationRecords(plain);
    };
    ASSERT_TRUE(same());
    for (int round = 0; round < 300; ++round) {
        const auto before = records;
        const auto copy = plain;
        const auto& some = plain[random() % plain.size()];
        const Date date = some.date;
        switch (random() % 6) {
            case 0: {
                const auto id = some.id;
                std::erase_if(plain, [&](const auto& r) { return r.id == id; });
                records = records.without(id);
                break;
            }
            case 1:
                if (random() % 8 != 0) break;
                for (auto& r : plain)
                    if (r.date < date) r.text.reset();
                records = records.withoutTextBefore(date);
                break;
            case 2:
                if (plain.size() < 500) break;
                std::erase_if(plain, [&](const auto& r) { return r.date > date; });
                records = records.between({-1e300}, date);
                break;
            case 3:
                std::ranges::stable_sort(plain, std::greater<>(), &DictationRecord::date);
                records = records.newestFirst();
                break;
            default:
                plain.insert(plain.begin(), recordOf("new"));
                plain.front().date = {some.date.secondsSinceReferenceDate + random() % 999};
                records = records.prepending(plain.front());
        }
        ASSERT_TRUE(same()) << round;
        ASSERT_TRUE(std::equal(before.begin(), before.end(), copy.begin(), copy.end()));
        ASSERT_EQ(records[plain.size() / 2], plain[plain.size() / 2]);
        while (plain.size() < 300) {
            plain.insert(plain.begin(), recordOf("more"));
            records = records.prepending(plain.front());
        }
    }
    EXPECT_TRUE(records.without(Uuid{}).isSharedWith(records));
    EXPECT_TRUE(records.withoutTextBefore({-1e300}).isSharedWith(records));
    EXPECT_EQ(records.prepending(recordOf("x")).parts().back().chunk, records.parts().back().chunk);
    EXPECT_EQ(records.followedBy(records).size(), 2 * records.size());
}

}  // namespace
}  // namespace quorvi::test
