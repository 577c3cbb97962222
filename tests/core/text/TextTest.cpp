#include "QuorviCore/text/Text.h"

#include <gtest/gtest.h>

#include "QuorviCore/text/Characters.h"
#include "QuorviCore/text/Folding.h"
#include "QuorviCore/text/Transliteration.h"
#include "tests/support/Texts.h"

namespace quorvi::test {
namespace {

std::vector<std::string_view> charactersOf(std::string_view s) {
    std::vector<std::string_view> result;
    for (; !s.empty(); s.remove_prefix(result.back().size()))
        result.push_back(text::firstCharacters(s, 1));
    return result;
}

void expectThatFoldingPiecesFoldsTheWhole(const std::string& s) {
    EXPECT_EQ(text::searchFolded(s), text::caseFolded(text::withoutDiacritics(s)));
}

// Of two texts in Form C.
void expectSharedEndsAsCharactersSay(const std::string& a, const std::string& b) {
    const auto as = charactersOf(a), bs = charactersOf(b);
    const std::size_t shorter = std::min(as.size(), bs.size());
    std::size_t p = 0, startBytes = 0, s = 0, endBytes = 0;
    while (p < shorter && as[p] == bs[p]) startBytes += as[p++].size();
    while (s < shorter - p && as[as.size() - s - 1] == bs[bs.size() - s - 1])
        endBytes += as[as.size() - ++s].size();
    EXPECT_EQ(text::sharedStart(a, b), startBytes);
    EXPECT_EQ(text::sharedEnd(a, b, startBytes), endBytes);
    std::size_t offset = 0;
    for (const auto character : as) {
        EXPECT_EQ(text::nextCharacter(a, offset), offset + character.size());
        offset += character.size();
        EXPECT_EQ(text::previousCharacter(a, offset), offset - character.size());
    }
}

void expectJoinedEqualityAsFormCSays(const std::string& prefix, const std::string& middle,
                                     const std::string& suffix, const std::string& whole) {
    EXPECT_EQ(text::equalJoined(prefix, middle, suffix, whole),
              text::toNfc(prefix + middle + suffix) == text::toNfc(whole));
}

TEST(Text, IsHandledInQuickWaysAsInTheSlowOnes) {
    for (unsigned seed = 0; seed < 20'000 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        HostileTexts some(random);
        const std::string any = some(24);
        const auto count = text::characterCount(any);
        for (const auto limit : {count - 1, count, count + 1, count / 2})
            EXPECT_EQ(text::hasMoreCharacters(any, limit), count > limit) << limit;
        expectThatFoldingPiecesFoldsTheWhole(some(9));
        const std::string start = some(4), end = some(4);
        const auto a = text::toNfc(start + some(3) + end), b = text::toNfc(start + some(3) + end);
        expectSharedEndsAsCharactersSay(a, b);
        EXPECT_EQ(text::equal(start + "x" + a, start + "x" + b), a == b);
        EXPECT_TRUE(text::equal(start + end, text::toNfc(start + end)));
        expectJoinedEqualityAsFormCSays(start, b, end, a);
        expectJoinedEqualityAsFormCSays(start, a, end, some(2) + start + a + end);
    }
    for (char32_t c = 1; c < 0x3400; ++c)
        expectThatFoldingPiecesFoldsTheWhole(utf8(static_cast<UChar32>(c)));
}

TEST(Text, IsEqualToItsEquivalentsOfAnyLengthAndReadInLatinLetters) {
    EXPECT_TRUE(text::equal(repeated("\u1FEF", 50), repeated("`", 50)));
    EXPECT_TRUE(text::equal(repeated("\u0390", 50), repeated("ι\u0308\u0301", 50)));
    EXPECT_TRUE(text::equal("\U0001D160", "\U0001D158\U0001D165\U0001D16E"));
    EXPECT_TRUE(text::equal("a\xFFz", "a\uFFFDz"));
    EXPECT_FALSE(text::equal("", "\u0301"));
    EXPECT_FALSE(text::equal("e\u0301\u0316", "e\u0316"));
    EXPECT_EQ(text::toLatin("Tarnél, 100 € 😀 Τάρνελ Мир"), "Tarnél, 100 € 😀 Tárnel Mir");
}

}  // namespace
}  // namespace quorvi::test
