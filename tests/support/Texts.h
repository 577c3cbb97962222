#pragma once

#include <unicode/unistr.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace quorvi::test {

// The words of a table, however many spaces are between them.
std::vector<std::string> split(const std::string& words);

std::string repeated(std::string_view s, int times);

std::string utf8(const icu::UnicodeString& s);

// Texts that are hard to cut, fold and compose, of a few pieces that therefore meet often.
class HostileTexts {
public:
    explicit HostileTexts(std::mt19937& random) : random_(&random) {
        for (auto& piece : chosen_) piece = random() % 4 ? all[random() % all.size()] : "a";
    }
    // Fewer than `most` pieces.
    std::string operator()(unsigned most);

private:
    static inline const std::vector<std::string> all = [] {
        // clang-format off
        auto pieces = split(
            "A b é e\u0301 \u0301 \u0323 Σ ς ΐ Ω ß ẞ İ ı ﬁ ᾳ Å ŉ ǰ \u0345 \u212B ’ … © 1\u20E3 "
            "\u200D \uFE0F ❤️ 👩 👩 👍🏽 🇬 🇬 😀 \u0600 \u00AD \u1100 \u1161 "
            "\u11A8 "
            "각 "
            "한 "
            "क\u094D "
            "त \u093F \u093C שׁ \xFF \u0001");
        // clang-format on
        for (const auto* space : {" ", "\r", "\n", "\u2000"}) pieces.emplace_back(space);
        return pieces;
    }();

    std::mt19937* random_;
    std::string chosen_[8];
};

}  // namespace quorvi::test
