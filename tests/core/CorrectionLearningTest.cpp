#include "QuorviCore/corrections/CorrectionLearning.h"

#include <gtest/gtest.h>

#include <random>

#include "QuorviCore/corrections/CorrectionContext.h"
#include "QuorviCore/text/Characters.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/text/Transliteration.h"

namespace quorvi::test {
namespace {

constexpr Date now{7.5e8};

// What is learned from an edit, as "from -> to"; empty when nothing is.
std::string learned(std::string_view original, std::string_view edited) {
    const auto rule = CorrectionLearning::suggestion(original, edited, now);
    return rule ? rule->original + " -> " + rule->replacement : "";
}

std::string repeated(std::string_view s, int times) {
    std::string result;
    while (times-- > 0) result += s;
    return result;
}

TEST(CorrectionContext, CutsTheFieldAroundTheSelection) {
    const auto context = CorrectionContext::make("Hello world", {6, 0}, "big ");
    ASSERT_TRUE(context);
    EXPECT_EQ(context->prefix(), "Hello ");
    EXPECT_EQ(context->suffix(), "world");
    EXPECT_EQ(context->expectedField(), "Hello big world");
    const auto inEmoji = CorrectionContext::make("a😀é漢b", {3, 2}, "x");
    ASSERT_TRUE(inEmoji);
    EXPECT_EQ(inEmoji->expectedField(), "a😀xb");
}

TEST(CorrectionContext, RefusesRangesThatAreNoneOfWholeCharacters) {
    const struct {
        const char* name;
        const char* field;
        Utf16Range selection;
    } rows[] = {
        {"behind the end", "Hello world", {12, 0}},
        {"longer than the rest", "Hello world", {6, 6}},
        {"overflowing", "Hello world", {6, INT64_MAX}},
        {"negative location", "Hello world", {-1, 1}},
        {"negative length", "Hello world", {6, -1}},
        {"begin inside a pair", "a😀b", {2, 1}},
        {"end inside a pair", "a😀b", {0, 2}},
        {"before a combining mark", "ae\u0301b", {2, 0}},
        {"inside a line break", "a\r\nb", {2, 1}},
        {"inside a family", "👨‍👩‍👧", {3, 0}},
        {"inside a flag", "🇬🇷🇬🇷", {6, 0}},
    };
    for (const auto& row : rows)
        EXPECT_FALSE(CorrectionContext::make(row.field, row.selection, "x")) << row.name;
    EXPECT_TRUE(CorrectionContext::make("🇬🇷🇬🇷", {4, 4}, "x"));
    EXPECT_FALSE(CorrectionContext::make("Hello", {0, 0}, ""));
}

TEST(CorrectionContext, CountsTheLimitInUtf16Units) {
    EXPECT_TRUE(CorrectionContext::make(repeated("漢", 100'000), {100'000, 0}, "x"));
    EXPECT_FALSE(CorrectionContext::make(repeated("漢", 100'001), {0, 0}, "x"));
    EXPECT_TRUE(CorrectionContext::make(repeated("😀", 50'000), {100'000, 0}, "x"));
    EXPECT_FALSE(CorrectionContext::make(repeated("😀", 50'000) + "a", {0, 0}, "x"));
    const auto context = CorrectionContext::make("", {0, 0}, "x");
    EXPECT_TRUE(context->editedTranscript(std::string(100'000, 'a')));
    EXPECT_FALSE(context->editedTranscript(std::string(100'001, 'a')));
}

TEST(CorrectionContext, VerifiesAPasteWhereItWasExpectedOrInPlaceOfTheWholeField) {
    using C = CorrectionContext;
    const auto inside = C::verified("Hello world", Utf16Range{6, 5}, "Welt", "Hello Welt");
    ASSERT_TRUE(inside);
    EXPECT_EQ(inside->prefix(), "Hello ");
    const auto whole = C::verified("abc", Utf16Range{1, 1}, "xyz", "xyz");
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->prefix() + whole->suffix(), "");
    EXPECT_EQ(C::verified("abc", Utf16Range{0, 3}, "xyz", "xyz"), whole);
    EXPECT_EQ(C::verified("abc", std::nullopt, "xyz", "xyz"), whole);
    EXPECT_EQ(C::verified("abc", Utf16Range{99, 0}, "xyz", "xyz"), whole);
    // Equivalent text counts as the same text.
    EXPECT_TRUE(
        C::verified("Café: ", Utf16Range{6, 0}, "thé\u0323", "Cafe\u0301: the\u0323\u0301"));

    EXPECT_FALSE(C::verified(std::nullopt, Utf16Range{0, 0}, "xyz", "xyz"));
    EXPECT_FALSE(C::verified("abc", Utf16Range{3, 0}, "xyz", "abc"));
    EXPECT_FALSE(C::verified("abc", Utf16Range{3, 0}, "xyz", "abcxyz "));
    EXPECT_FALSE(C::verified("xyz", std::nullopt, "xyz", "xyz"));
    EXPECT_FALSE(C::verified("e\u0301", std::nullopt, "é", "é"));
    EXPECT_FALSE(C::verified("abc", Utf16Range{0, 0}, "", "abc"));
}

TEST(CorrectionContext, ReadsTheEditBackBetweenWholeCharacters) {
    const auto context = CorrectionContext::make("Hello world", {6, 0}, "big ");
    EXPECT_EQ(context->editedTranscript("Hello BIG world"), "BIG ");
    EXPECT_EQ(context->editedTranscript("Hello world"), "");
    EXPECT_EQ(context->editedTranscript("Hi world"), std::nullopt);
    EXPECT_EQ(context->editedTranscript("Hello worlds"), std::nullopt);
    EXPECT_EQ(context->editedTranscript("Hello \u0301big world"), std::nullopt);
    EXPECT_EQ(context->editedTranscript("Hello big world\u0301"), std::nullopt);

    const auto doubled = CorrectionContext::make("aaaa", {2, 0}, "b");
    EXPECT_EQ(doubled->editedTranscript("aaa"), std::nullopt);
    EXPECT_EQ(doubled->editedTranscript("aaaa"), "");

    const auto accents = CorrectionContext::make("né |é", {3, 1}, "x");
    EXPECT_EQ(accents->editedTranscript("ne\u0301 yye\u0301"), "yy");
    EXPECT_EQ(accents->editedTranscript("ne\u0301\u0301 yyé"), std::nullopt);
}

TEST(CorrectionLearning, LearnsTheWholeWordsOfASmallFix) {
    EXPECT_EQ(learned("I like oxygen a lot", "I like oxygon a lot"), "oxygen -> oxygon");
    EXPECT_EQ(learned("call the russet miner team", "call the russetmanor team"),
              "russet miner -> russetmanor");
    EXPECT_EQ(learned("see tarnelX", "see tarnel"), "tarnelX -> tarnel");
    EXPECT_EQ(learned("anna_b left", "hanna_b left"), "anna_b -> hanna_b");
    EXPECT_EQ(learned("Thai cafe\u0301s!", "Thai caffés!"), "cafés -> caffés");
    EXPECT_EQ(learned("το τάρνελ είναι", "το tarnel είναι"), "τάρνελ -> tarnel");
    const auto rule = CorrectionLearning::suggestion("so oxygen", "so oxygon", now);
    ASSERT_TRUE(rule);
    EXPECT_TRUE(rule->learnedAutomatically && rule->isEnabled);
    EXPECT_EQ(rule->updatedAt, now);
}

TEST(CorrectionLearning, LearnsNothingFromOtherEdits) {
    const std::string word80(80, 'a');
    const struct {
        const char* name;
        std::string original, edited;
    } rows[] = {
        {"no change", "same", "same"},
        {"an equivalent form", "e\u0301t", "ét"},
        {"everything deleted", "same", ""},
        {"nothing before", "", "same"},
        {"punctuation added", "hello", "hello,"},
        {"space added", "hello", "hello "},
        {"a rewrite", "a meeting now", "an appointment now"},
        {"numbers only", "room 12 now", "room 13 now"},
        {"one of two occurrences", "the cat saw the cat", "the cut saw the cat"},
        {"words that another match takes", "cat cat sat", "cat cot sat"},
        {"six words", "a b c d e f", "x b c d e y"},
        {"a line break", "one\ntwo", "onetwo"},
        {"a Unicode line break", "one\u2028two", "one\u2028\u0085two"},
        {"over 80 characters", "x " + word80 + "b", "x " + word80 + "c"},
    };
    for (const auto& row : rows) EXPECT_EQ(learned(row.original, row.edited), "") << row.name;
    EXPECT_EQ(learned("x " + word80, "x b" + word80.substr(1)),
              word80 + " -> b" + word80.substr(1));
}

TEST(CorrectionLearning, CountsDifferencesWithoutCaseAccentsAndScript) {
    const auto resembles = CorrectionLearning::resemblesSpellingChange;
    EXPECT_TRUE(resembles("oxygen", "oxygon"));
    EXPECT_TRUE(resembles("ab", "cd"));
    EXPECT_FALSE(resembles("abc", "def"));
    EXPECT_TRUE(resembles("abcde", "xycde"));
    EXPECT_FALSE(resembles("abcde", "xyzde"));
    EXPECT_TRUE(resembles("abcdefghi", "xyzdefghi"));
    EXPECT_FALSE(resembles("abcdefgh", "xyzdefgh"));
    EXPECT_TRUE(resembles("R-U S.S!E T", "rüssét"));
    EXPECT_TRUE(resembles("Αθήνα", "Athena"));
    EXPECT_TRUE(resembles("Москва", "moskva"));
    EXPECT_FALSE(resembles("Αθήνα", "Paris"));
}

// The quick ways through the text must find what splitting both texts into characters finds.
TEST(CorrectionLearning, FindsTheSharedCharactersOfHostileTexts) {
    const std::vector<std::string> atoms{"a",  "b",      " ",      "é",      "\u0301", "\u200D",
                                         "👩",  "🇬",      "\r",     "\n",     "😀",      "\u0600",
                                         "각", "\u1100", "\u1161", "क\u094D"};
    const auto characters = [](std::string_view s) {
        std::vector<std::string_view> result;
        for (; !s.empty(); s.remove_prefix(result.back().size()))
            result.push_back(text::firstCharacters(s, 1));
        return result;
    };
    for (unsigned seed = 0; seed < 20'000; ++seed) {
        std::mt19937 random(seed);
        const auto some = [&](unsigned most) {
            std::string s;
            for (unsigned n = random() % most; n > 0; --n) s += atoms[random() % atoms.size()];
            return s;
        };
        const std::string start = some(4), end = some(4);
        const std::string a = text::toNfc(start + some(3) + end);
        const std::string b = text::toNfc(start + some(3) + end);
        const auto as = characters(a), bs = characters(b);
        const std::size_t shorter = std::min(as.size(), bs.size());
        std::size_t p = 0, startBytes = 0, s = 0, endBytes = 0;
        while (p < shorter && as[p] == bs[p]) startBytes += as[p++].size();
        while (s < shorter - p && as[as.size() - s - 1] == bs[bs.size() - s - 1])
            endBytes += as[as.size() - ++s].size();
        ASSERT_EQ(text::sharedStart(a, b), startBytes) << "seed " << seed;
        ASSERT_EQ(text::sharedEnd(a, b, startBytes), endBytes) << "seed " << seed;
        std::size_t offset = 0;
        for (const auto character : as) {
            ASSERT_EQ(text::nextCharacter(a, offset), offset + character.size()) << "seed " << seed;
            offset += character.size();
            ASSERT_EQ(text::previousCharacter(a, offset), offset - character.size())
                << "seed " << seed;
        }
        ASSERT_EQ(text::equal(start + "x" + a, start + "x" + b), a == b) << "seed " << seed;
        ASSERT_EQ(text::equalJoined(start, b, end, a),
                  text::toNfc(start + b + end) == text::toNfc(a))
            << "seed " << seed;
        const std::string joined = some(2) + start + a + end;
        ASSERT_EQ(text::equalJoined(start, a, end, joined),
                  text::toNfc(start + a + end) == text::toNfc(joined))
            << "seed " << seed;
        ASSERT_TRUE(text::equal(start + end, text::toNfc(start + end))) << "seed " << seed;
    }
}

TEST(Text, IsEqualToItsEquivalentsOfAnyLength) {
    EXPECT_TRUE(text::equal(repeated("\u1FEF", 50), repeated("`", 50)));
    EXPECT_TRUE(text::equal(repeated("\u0390", 50), repeated("ι\u0308\u0301", 50)));
    EXPECT_TRUE(text::equal("\U0001D160", "\U0001D158\U0001D165\U0001D16E"));
    EXPECT_TRUE(text::equal("a\xFFz", "a\uFFFDz"));
    EXPECT_FALSE(text::equal("", "\u0301"));
    EXPECT_FALSE(text::equal("e\u0301\u0316", "e\u0316"));
    EXPECT_TRUE(text::equal("e\u0301\u0316", "e\u0316\u0301"));
}

TEST(Transliteration, LeavesLatinTextAloneAndReadsOtherScripts) {
    EXPECT_EQ(text::toLatin("Tarnél, 100 € 😀"), "Tarnél, 100 € 😀");
    EXPECT_EQ(text::toLatin("Τάρνελ a"), "Tárnel a");
    EXPECT_EQ(text::toLatin("Мир"), "Mir");
}

}  // namespace
}  // namespace quorvi::test
