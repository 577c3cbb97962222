#include "QuorviCore/corrections/TextCorrections.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>

#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "QuorviCore/transcription/QuorviError.h"

namespace quorvi::test {
namespace {

TextCorrection rule(std::string original, std::string replacement) {
    return {.original = std::move(original), .replacement = std::move(replacement)};
}

std::string repeated(std::string_view s, int times) {
    std::string result;
    while (times-- > 0) result += s;
    return result;
}

TEST(TextCorrection, SaysWhatIsWrongWithAPhrase) {
    const std::string missing = "Enter both the recognized phrase and its replacement.";
    const std::string tooLong = "Keep each phrase within 160 characters.";
    EXPECT_EQ(rule(" \t\u2003\n", std::string(200, 'x')).validationMessage(), missing);
    EXPECT_EQ(rule("x", "\u0085").validationMessage(), missing);
    EXPECT_EQ(rule(std::string(160, 'x'), "y").validationMessage(), std::nullopt);
    EXPECT_EQ(rule("  " + std::string(160, 'x') + "\n", "y").validationMessage(), std::nullopt);
    EXPECT_EQ(rule(std::string(161, 'x'), "y").validationMessage(), tooLong);
    // Characters count as the user sees them, whatever they are made of.
    EXPECT_EQ(rule("y", repeated("👨‍👩‍👧", 160)).validationMessage(), std::nullopt);
    EXPECT_EQ(rule("y", repeated("e\u0301", 161)).validationMessage(), tooLong);
}

TEST(TextCorrection, MatchKeysForgetCaseAndSpacingButNotAccents) {
    const auto key = TextCorrection::matchKey;
    EXPECT_EQ(key("  Russet\tMANOR\u3000"), "russet manor");
    EXPECT_EQ(key("Cafe\u0301"), key("CAFÉ"));
    EXPECT_NE(key("Café"), key("cafe"));
    EXPECT_EQ(key("ΛΌΓΟΣ"), key("λόγος"));
    EXPECT_EQ(key("Straße"), key("STRASSE"));
    // Folding takes these apart in different ways; the keys are equal byte by byte all the same.
    EXPECT_EQ(key("\u0390"), key("Ϊ\u0301"));
    EXPECT_EQ(key(" \n"), "");
}

// A few readable rows; the comparison with regular expressions covers the rest.
TEST(TextCorrections, ReplaceWholeWordsInAnyCaseAndSpacing) {
    const TextCorrections rules({rule("russet manor", "Russet Miner"), rule("λόγος", "ratio"),
                                 rule(".net", "dotnet"), rule("new", "New"),
                                 rule("new york", "New York"), rule("a", "b"), rule("b", "a a"),
                                 rule("y b y", "Y"), rule("x y", "X")});
    const struct {
        const char* text;
        const char* expected;
    } rows[] = {
        {"RUSSET   manor,", "Russet Miner,"},
        {"(russet\u00A0\nmanor)", "(Russet Miner)"},
        {"russetmanor russet manor_2 russet manor\u0301",
         "russetmanor russet manor_2 russet manor\u0301"},
        {"ΛΌΓΟΣ, λόγοσ λόγους", "ratio, ratio λόγους"},
        {"use .NET, not asp.net", "use dotnet, not asp.net"},
        {"new york, new", "New York, New"},          // the longer match wins
        {"a b a", "b a a b"},                        // a replacement is not searched again
        {"x y b y b y", "X a a y a a y"},            // a lost match excludes the next one
        {"cafe\u0301 \xFF", "cafe\u0301 \xFF"},      // byte for byte
        {"cafe\u0301 \xFF new", "café \uFFFD New"},  // form C as soon as anything matches
    };
    for (const auto& row : rows) EXPECT_EQ(rules.apply(row.text), row.expected) << row.text;
}

TEST(TextCorrections, ServeSeveralThreadsAndOutliveTheirSource) {
    auto original = std::make_unique<TextCorrections>(std::vector{rule("tea time", "TT")});
    const TextCorrections copy = *original;
    original.reset();
    std::vector<std::jthread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&copy, t] {
            const TextCorrections own({rule("n" + std::to_string(t), "own")});
            for (int i = 0; i < 200; ++i) {
                EXPECT_EQ(copy.apply("Tea  TIME n1"), "TT n1");
                EXPECT_EQ(own.apply("tea n" + std::to_string(t)), "tea own");
            }
        });
}

TEST(TextCorrectionCoding, SurvivesStorageWithEveryBit) {
    TextCorrection r{.id = "6C67A4E1-35AB-43E6-AB6F-46D06D4DA217",
                     .original = std::string("\"\\/\b\n\x01 ς👨‍👩‍👧\0x", 29),
                     .replacement = "",
                     .isEnabled = false,
                     .learnedAutomatically = true,
                     .updatedAt = {}};
    for (const double seconds : {0.0, -1.5, 0.1, 7.8e8 + 1.0 / 3, 1e300, 5e-324,
                                 std::nextafter(8e8, 9e8), -123456789.12345678}) {
        r.updatedAt = {seconds};
        EXPECT_EQ(decodeCorrection(encodeCorrection(r)), r) << seconds;
    }
    const std::vector rules{r, rule("a", "b")};
    EXPECT_EQ(decodeCorrections(encodeCorrections(rules)), rules);
    EXPECT_EQ(decodeCorrections("[]"), std::vector<TextCorrection>{});
    // Others may order the keys differently, add some, and write identities in lower case.
    r = rule("😀", "r");
    r.id = "6C67A4E1-35AB-43E6-AB6F-46D06D4DA217";
    EXPECT_EQ(
        decodeCorrection(
            " {\"x\":[{}],\"updatedAt\":0,\"replacement\":\"r\",\"original\":\"\\ud83d\\ude00\","
            "\"learnedAutomatically\":false,\"isEnabled\":true,"
            "\"id\":\"6c67a4e1-35ab-43e6-ab6f-46d06d4da217\"} "),
        r);
}

TEST(TextCorrectionCoding, WritesOneCanonicalForm) {
    TextCorrection r{.id = "6C67A4E1-35AB-43E6-AB6F-46D06D4DA217",
                     .original = "a\xFF",
                     .replacement = "é",
                     .updatedAt = {0.1}};
    EXPECT_EQ(encodeCorrection(r),
              "{\"id\":\"6C67A4E1-35AB-43E6-AB6F-46D06D4DA217\",\"isEnabled\":true,"
              "\"learnedAutomatically\":false,\"original\":\"a\uFFFD\",\"replacement\":\"é\","
              "\"updatedAt\":0.1}");
    r.updatedAt = {std::numeric_limits<double>::infinity()};
    EXPECT_THROW(encodeCorrections({r}), QuorviError);
}

TEST(TextCorrectionCoding, RefusesWhatIsNoRuleAsAWhole) {
    const std::string good = encodeCorrection(rule("some", "thing"));
    const auto with = [&good](const std::string& from, const std::string& to) {
        std::string json = good;
        return json.replace(json.find(from), from.size(), to);
    };
    const std::string broken[] = {
        "",
        "null",
        "[]",
        good + ",",
        with("\"id\":\"", "\"id\":\"0"),
        with("\"isEnabled\":true", "\"isEnabled\":1"),
        with("\"isEnabled\":true", "\"enabled\":true"),
        with("\"some\"", "null"),
        with("\"some\"", "\"\xED\xA0\x80\""),
        with("\"some\"", "\"\\ud83d\""),
        with("\"updatedAt\":0", "\"updatedAt\":\"0\""),
        with("\"updatedAt\":0", "\"updatedAt\":1e999"),
        with("\"updatedAt\":0", "\"updatedAt\":NaN"),
        repeated("[", 1'000'000),
        repeated("[", 1'000'000) + repeated("]", 1'000'000),
    };
    ASSERT_TRUE(decodeCorrection(good));
    for (const auto& json : broken) {
        EXPECT_EQ(decodeCorrection(json), std::nullopt) << json.substr(0, 200);
        EXPECT_EQ(decodeCorrections("[" + good + "," + json + "]"), std::nullopt)
            << json.substr(0, 200);
    }
    EXPECT_EQ(decodeCorrections(good), std::nullopt);
}

}  // namespace
}  // namespace quorvi::test
