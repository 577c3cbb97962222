#include <gtest/gtest.h>

#include <random>

#include "QuorviCore/text/Text.h"

namespace quorvi::test {
namespace {

// The full segmentation decides; the shortcut before it must never say otherwise.
TEST(CharacterLimit, AgreesWithTheFullCountOnHostileText) {
    const char* const pieces[] = {"a",       "\r",     "\n",       "\u0001",  "\u0301",
                                  "\u200D",  "👩",      "👍🏽", "🇬",       "\u093F",
                                  "क\u094D", "त",      "\u1100",   "\u1161",  "\u11A8",
                                  "\u0600",  "\xFF",   "©\uFE0F",  "é",       "Ω",
                                  "\u00AD",  "\uFE0F", "❤️",   "1\u20E3", "שׁ"};
    std::mt19937 random(11);
    for (int round = 0; round < 10'000; ++round) {
        std::string s;
        for (auto n = random() % 24; n > 0; --n) s += pieces[random() % std::size(pieces)];
        const auto count = text::characterCount(s);
        for (const auto limit : {count - 1, count, count + 1, count / 2})
            ASSERT_EQ(text::hasMoreCharacters(s, limit), count > limit)
                << testing::PrintToString(s) << " " << limit;
    }
}

}  // namespace
}  // namespace quorvi::test
