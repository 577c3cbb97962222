#include "QuorviCore/corrections/TextCorrections.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "QuorviCore/Error.h"
#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "tests/support/Texts.h"

namespace quorvi::test {
namespace {

TextCorrection rule(std::string original, std::string replacement) {
    return {.original = std::move(original), .replacement = std::move(replacement)};
}

TEST(TextCorrection, LimitsThePhraseToCharactersThatTheUserSees) {
    EXPECT_FALSE(rule("  " + std::string(160, 'x') + "\n", repeated("👨‍👩‍👧", 160))
                     .validationMessage());
    EXPECT_EQ(rule("y", repeated("e\u0301", 161)).validationMessage(), say::correctionTooLong());
    EXPECT_EQ(rule("x", "\u0085").validationMessage(), say::correctionIncomplete());
}

TEST(TextCorrection, MatchKeysForgetCaseAndSpacingButNotAccents) {
    const auto key = TextCorrection::matchKey;
    EXPECT_EQ(key("  Russet\tMANOR\u3000"), "russet manor");
    EXPECT_EQ(key(" \n"), "");
    EXPECT_NE(key("Café"), key("cafe"));
    // The last pair folds in two different ways to equal bytes.
    for (const auto& [a, b] : {std::pair("Cafe\u0301", "CAFÉ"),
                               {"ΛΌΓΟΣ", "λόγος"},
                               {"Straße", "STRASSE"},
                               {"\u0390", "Ϊ\u0301"}})
        EXPECT_EQ(key(a), key(b)) << a;
}

TEST(TextCorrectionCoding, WritesOneCanonicalFormAndReadsWhatOthersMayWrite) {
    TextCorrection r{.id = "6C67A4E1-35AB-43E6-AB6F-46D06D4DA217",
                     .original = std::string("\"\\/\b\n\x01 ς👨‍👩‍👧\0x", 29),
                     .isEnabled = false,
                     .learnedAutomatically = true};
    for (const double seconds : {0.0, -1.5, 0.1, 7.8e8 + 1.0 / 3, 1e300, 5e-324,
                                 std::nextafter(8e8, 9e8), -123456789.12345678}) {
        r.updatedAt = {seconds};
        EXPECT_EQ(decodeCorrection(encodeCorrection(r)), r) << seconds;
    }
    const std::vector rules{r, rule("a", "b")};
    EXPECT_EQ(decodeCorrections(encodeCorrections(rules)), rules);
    EXPECT_EQ(decodeCorrections("[]"), std::vector<TextCorrection>{});

    r = {.id = r.id, .original = "😀\xFF", .replacement = "r", .updatedAt = {0.1}};
    EXPECT_EQ(encodeCorrection(r),
              R"({"id":"6C67A4E1-35AB-43E6-AB6F-46D06D4DA217","isEnabled":true,)"
              R"("learnedAutomatically":false,"original":"😀�","replacement":"r",)"
              R"("updatedAt":0.1})");
    EXPECT_EQ(decodeCorrection(R"( {"x":[{}],"updatedAt":0.1,"replacement":"r","isEnabled":true,)"
                               R"("original":"\ud83d\ude00\ufffd","learnedAutomatically":false,)"
                               R"("id":"6c67a4e1-35ab-43e6-ab6f-46d06d4da217"} )"),
              r);
    r.updatedAt = {std::numeric_limits<double>::infinity()};
    EXPECT_THROW(encodeCorrections({r}), QuorviError);
}

TEST(TextCorrectionCoding, RefusesAListWithAnInvalidRule) {
    const std::string good = encodeCorrection(rule("some", "thing"));
    ASSERT_TRUE(decodeCorrection(good));
    EXPECT_EQ(decodeCorrections(good), std::nullopt);
    std::vector<std::string> broken{"", "null", "[]", good + ",", repeated("[", 1'000'000)};
    for (const auto& [from, to] : {std::pair(R"("id":")", R"("id":"0)"),
                                   {R"("isEnabled":true)", R"("isEnabled":1)"},
                                   {R"("isEnabled":true)", R"("enabled":true)"},
                                   {R"("some")", "null"},
                                   {R"("updatedAt":0)", R"("updatedAt":"0")"},
                                   {R"("updatedAt":0)", R"("updatedAt":1e999)"},
                                   {R"("updatedAt":0)", R"("updatedAt":NaN)"}}) {
        broken.push_back(good);
        broken.back().replace(good.find(from), std::strlen(from), to);
    }
    for (const auto& json : broken) {
        SCOPED_TRACE(json.substr(0, 200));
        EXPECT_EQ(decodeCorrection(json), std::nullopt);
        EXPECT_EQ(decodeCorrections("[" + good + "," + json + "]"), std::nullopt);
    }
}

}  // namespace
}  // namespace quorvi::test
