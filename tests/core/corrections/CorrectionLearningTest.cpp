#include "QuorviCore/corrections/CorrectionLearning.h"

#include <gtest/gtest.h>

#include "QuorviCore/corrections/CorrectionContext.h"
#include "tests/support/Texts.h"

namespace quorvi::test {
namespace {

using Context = CorrectionContext;

// The text around the selection, or "refused".
std::string around(std::string_view field, std::int64_t location, std::int64_t length) {
    const auto context = Context::make(field, {location, length}, "x");
    return context ? context->prefix() + "|" + context->suffix() : "refused";
}

TEST(CorrectionContext, CutsTheFieldBetweenWholeCharactersOnly) {
    EXPECT_EQ(around("Hello world", 6, 0), "Hello |world");
    EXPECT_EQ(around("a😀é漢b", 3, 2), "a😀|b");
    EXPECT_EQ(around("🇬🇷🇬🇷", 4, 4), "🇬🇷|");
    const std::pair<std::int64_t, std::int64_t> outside[]{
        {12, 0}, {6, 6}, {6, INT64_MAX}, {-1, 1}, {6, -1}};
    for (const auto& [location, length] : outside)
        EXPECT_EQ(around("Hello world", location, length), "refused") << location << "+" << length;
    EXPECT_EQ(around("a😀b", 0, 2), "refused");
    for (const auto* field : {"a😀b", "ae\u0301b", "a\r\nb", "👨‍👩‍👧", "🇬🇷"})
        EXPECT_EQ(around(field, 2, 0), "refused") << field;
    EXPECT_FALSE(Context::make("Hello", {0, 0}, ""));
}

TEST(CorrectionContext, CountsTheLimitInUtf16Units) {
    EXPECT_TRUE(Context::make(repeated("😀", 50'000), {100'000, 0}, "x"));
    EXPECT_FALSE(Context::make(repeated("😀", 50'000) + "a", {0, 0}, "x"));
    const auto context = Context::make("", {0, 0}, "x");
    EXPECT_TRUE(context->editedTranscript(std::string(100'000, 'a')));
    EXPECT_FALSE(context->editedTranscript(std::string(100'001, 'a')));
}

TEST(CorrectionContext, VerifiesAPasteWhereItWasExpectedOrInPlaceOfTheWholeField) {
    const auto inside = Context::verified("Hello world", Utf16Range{6, 5}, "Welt", "Hello Welt");
    ASSERT_TRUE(inside);
    EXPECT_EQ(inside->prefix(), "Hello ");
    EXPECT_EQ(inside->expectedField(), "Hello Welt");
    // Equivalent text counts as equal.
    EXPECT_TRUE(
        Context::verified("Café: ", Utf16Range{6, 0}, "thé\u0323", "Cafe\u0301: the\u0323\u0301"));
    const auto whole = Context::make("", {0, 0}, "xyz");
    for (const auto& selection : {std::optional(Utf16Range{1, 1}), std::optional(Utf16Range{0, 3}),
                                  std::optional(Utf16Range{99, 0}), std::optional<Utf16Range>()})
        EXPECT_EQ(Context::verified("abc", selection, "xyz", "xyz"), whole);

    EXPECT_FALSE(Context::verified(std::nullopt, Utf16Range{0, 0}, "xyz", "xyz"));
    for (const auto* after : {"abc", "abcxyz "})
        EXPECT_FALSE(Context::verified("abc", Utf16Range{3, 0}, "xyz", after));
    EXPECT_FALSE(Context::verified("xyz", std::nullopt, "xyz", "xyz"));
    EXPECT_FALSE(Context::verified("e\u0301", std::nullopt, "é", "é"));
    EXPECT_FALSE(Context::verified("abc", Utf16Range{0, 0}, "", "abc"));
}

TEST(CorrectionContext, ReadsTheEditBackBetweenWholeCharacters) {
    const struct {
        const char* field;
        Utf16Range selection;
        const char* edited;
        std::optional<std::string> expected;
    } rows[] = {
        {"Hello world", {6, 0}, "Hello BIG world", "BIG "},
        {"Hello world", {6, 0}, "Hello world", ""},
        {"Hello world", {6, 0}, "Hi world", std::nullopt},
        {"Hello world", {6, 0}, "Hello worlds", std::nullopt},
        {"Hello world", {6, 0}, "Hello \u0301big world", std::nullopt},
        {"Hello world", {6, 0}, "Hello big world\u0301", std::nullopt},
        {"aaaa", {2, 0}, "aaa", std::nullopt},
        {"aaaa", {2, 0}, "aaaa", ""},
        {"né |é", {3, 1}, "ne\u0301 yye\u0301", "yy"},
        {"né |é", {3, 1}, "ne\u0301\u0301 yyé", std::nullopt},
    };
    for (const auto& [field, selection, edited, expected] : rows)
        EXPECT_EQ(Context::make(field, selection, "big ")->editedTranscript(edited), expected)
            << edited;
}

TEST(CorrectionLearning, LearnsTheWholeWordsOfASmallFixAndNothingFromOtherEdits) {
    const std::string word80(80, 'a');
    const struct {
        std::string original, edited, from, to;
    } rows[] = {
        {"I like oxygen a lot", "I like oxygon a lot", "oxygen", "oxygon"},
        {"call the russet miner team", "call the russetmanor team", "russet miner", "russetmanor"},
        {"see tarnelX", "see tarnel", "tarnelX", "tarnel"},
        {"anna_b left", "hanna_b left", "anna_b", "hanna_b"},
        {"Thai cafe\u0301s!", "Thai caffés!", "cafés", "caffés"},
        {"το τάρνελ είναι", "το tarnel είναι", "τάρνελ", "tarnel"},
        {"x " + word80, "x b" + word80.substr(1), word80, "b" + word80.substr(1)},
        {"same", "same", "", ""},
        {"e\u0301t", "ét", "", ""},
        {"same", "", "", ""},
        {"", "same", "", ""},
        {"hello", "hello,", "", ""},
        {"hello", "hello ", "", ""},
        {"a meeting now", "an appointment now", "", ""},
        {"room 12 now", "room 13 now", "", ""},
        {"the cat saw the cat", "the cut saw the cat", "", ""},  // would change both
        {"cat cat sat", "cat cot sat", "", ""},                  // another match takes the words
        {"a b c d e f", "x b c d e y", "", ""},
        {"one\ntwo", "onetwo", "", ""},
        {"one\u2028two", "one\u2028\u0085two", "", ""},
        {"x " + word80 + "b", "x " + word80 + "c", "", ""},
    };
    constexpr Date now{7.5e8};
    for (const auto& [original, edited, from, to] : rows) {
        const auto rule = CorrectionLearning::suggestion(original, edited, now);
        ASSERT_EQ(rule.has_value(), !from.empty()) << original;
        if (!rule) continue;
        EXPECT_EQ(rule->original + " -> " + rule->replacement, from + " -> " + to);
        EXPECT_TRUE(rule->learnedAutomatically && rule->isEnabled && rule->updatedAt == now);
    }
}

TEST(CorrectionLearning, CountsDifferencesWithoutCaseAccentsAndScript) {
    const auto resembles = CorrectionLearning::resemblesSpellingChange;
    for (const auto& [from, to] : {std::pair("oxygen", "oxygon"),
                                   {"ab", "cd"},
                                   {"abcde", "xycde"},
                                   {"abcdefghi", "xyzdefghi"},
                                   {"R-U S.S!E T", "rüssét"},
                                   {"Αθήνα", "Athena"},
                                   {"Москва", "moskva"}})
        EXPECT_TRUE(resembles(from, to)) << from;
    for (const auto& [from, to] : {std::pair("abc", "def"),
                                   {"abcde", "xyzde"},
                                   {"abcdefgh", "xyzdefgh"},
                                   {"Αθήνα", "Paris"}})
        EXPECT_FALSE(resembles(from, to)) << from;
}

}  // namespace
}  // namespace quorvi::test
