#include <gtest/gtest.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

#include "QuorviCore/corrections/TextCorrections.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/text/Tokens.h"
#include "tests/support/Seeds.h"
#include "tests/support/Texts.h"
#include "tests/support/reference/LiteralRules.h"

namespace quorvi::test {
namespace {

using namespace std::string_literals;

TextCorrection rule(std::string original, std::string replacement) {
    return {.original = std::move(original), .replacement = std::move(replacement)};
}

icu::UnicodeString utf16(std::string_view s) {
    return icu::UnicodeString::fromUTF8({s.data(), static_cast<int32_t>(s.size())});
}

void expectSame(const TextCorrections& prepared, LiteralRules& literal, const std::string& text) {
    const auto actual = prepared.applying(text);
    const auto expected = literal.applying(text);
    EXPECT_EQ(actual.text, expected.text) << text;
    EXPECT_TRUE(actual.appliedRules == expected.appliedRules) << text;
}

const auto letters = split(
    "a A s S ss SS ß ẞ ſ ﬁ fi FI f ﬀ ﬆ st ſt k K \u212A µ μ Μ ς σ Σ ᾳ αι ΑΙ ᾼ ŉ ʼn ʼN n "
    "\u0345 ι Ι \u1FBE i I ı İ i\u0307 \u0390 \u1FD3 Ϊ\u0301 ϊ\u0301 ι\u0308\u0301 é "
    "e\u0301 É E\u0301 e \u0301 \u0308 \u0316 ό Ό \u2126 ω \u212B å Å ǰ J\u030C և եւ ԵՒ "
    "\u10A0 \u2D00 \u1C90 \u10D0 \u13A0 \uAB70 𐐀 𐐨 Ⅷ ⅷ 1 ٣ _ ² ª ʰ 가 각 \u1100 \u1161 "
    "\u11A8 漢 \uF900 豈 क\u094D\u0937 ᾈ ἀι ᾀ ΰ \u1E96 h\u0331"s);
const auto symbols = split(
    ". , - + ( ) [ ] \\ ^ $ | * ? { } # & / \" ' ’ ! 😀 👨‍👩‍👧 🇬🇷 € \u200D "
    "\uFEFF "
    "\u200B "
    "\u00AD \uFFFD \0 Ⓐ ⓐ \u037E \u1FEF \u180E \x1C \xFF \xC3 \xED\xA0\x80 \xF0\x9F "
    "\xED\xBF\xBF \xE2\x82 \x80"s);
const std::vector<std::string> spaces{" ",      " ",      "  ",     "\t",     "\n",
                                      "\r\n",   "\u00A0", "\u2003", "\u2000", "\u3000",
                                      "\u0085", "\u2028", "\v",     "\u1680"};

// Generates rules and texts over a small random alphabet, so that they match often.
class Generator {
public:
    explicit Generator(unsigned seed) : random_(seed) {
        // Phrases that repeat words overlap themselves and each other.
        if (one(3)) wordLength_ = 1;
        letters_ = sample(letters, wordLength_ == 1 ? 2 : 2 + below(5));
        symbols_ = sample(symbols, 1 + below(3));
        spaces_ = sample(spaces, 1 + below(2));
    }

    std::vector<TextCorrection> rules() {
        std::vector<TextCorrection> result;
        for (std::size_t n = 1 + below(12); n > 0; --n) {
            auto r = rule(phrase(), "<" + std::to_string(result.size()) + ">");
            if (!result.empty() && one(6)) r.original = variant(any(result).original);
            if (!result.empty() && one(12)) r.id = any(result).id;
            if (one(15)) r.isEnabled = false;
            if (one(20)) r.original = any(spaces_);
            if (one(25)) r.replacement = " \n";
            if (one(25)) r.replacement = any(letters_) + " " + r.original;
            if (one(40)) r.original += std::string(160, 'x');
            result.push_back(r);
        }
        return result;
    }

    std::string text(const std::vector<TextCorrection>& rules) {
        std::string result;
        for (std::size_t n = below(14); n > 0; --n) {
            const auto& phrase = any(rules).original;
            const std::string pieces[]{word(), any(symbols_), any(spaces_), phrase};
            const auto kind = below(6);
            result += kind < 4 ? pieces[kind] : variant(phrase);
            if (!one(3)) result += any(spaces_);
        }
        return result;
    }

private:
    std::size_t below(std::size_t n) { return static_cast<std::size_t>(random_() % n); }
    bool one(std::size_t in) { return below(in) == 0; }
    template <class T>
    const T& any(const std::vector<T>& from) {
        return from[below(from.size())];
    }
    std::vector<std::string> sample(const std::vector<std::string>& from, std::size_t n) {
        std::vector<std::string> result;
        while (n-- > 0) result.push_back(any(from));
        return result;
    }
    std::string word() {
        std::string result;
        for (std::size_t n = 1 + below(wordLength_); n > 0; --n) result += any(letters_);
        return result;
    }
    std::string phrase() {
        std::string result = one(8) ? any(spaces_) : "";
        for (std::size_t n = 1 + below(4); n > 0; --n) {
            if (one(5)) result += any(symbols_);
            if (!one(8)) result += word();
            if (one(5)) result += any(symbols_);
            if (n > 1) result += any(spaces_);
        }
        return result;
    }
    // An equivalent form of the phrase.
    std::string variant(const std::string& phrase) {
        icu::UnicodeString s = utf16(phrase);
        UErrorCode status = U_ZERO_ERROR;
        const auto& decomposing = *icu::Normalizer2::getNFDInstance(status);
        const auto kind = below(6);
        if (kind == 0) return utf8(s.toUpper(icu::Locale::getRoot()));
        if (kind == 1) return utf8(s.toLower(icu::Locale::getRoot()));
        if (kind == 2) return utf8(s.foldCase());
        if (kind == 3) return utf8(decomposing.normalize(s, status));
        return kind == 4 ? utf8(s.findAndReplace(u" ", u"\t \n")) : phrase;
    }

    std::mt19937 random_;
    std::size_t wordLength_ = 3;
    std::vector<std::string> letters_, symbols_, spaces_;
};

// More rounds from another seed: QUORVI_SEED=… QUORVI_ROUNDS=… core_tests
TEST(TextCorrectionsDifferential, RandomRulesGiveWhatTheirRegularExpressionsGive) {
    const unsigned seed = fromEnvironment("QUORVI_SEED", 1);
    const unsigned rounds = fromEnvironment("QUORVI_ROUNDS", 100);
    std::size_t changed = 0;
    for (unsigned round = seed; round < seed + rounds && !HasFailure(); ++round) {
        Generator generator(round);
        const auto rules = generator.rules();
        const TextCorrections prepared(rules);
        LiteralRules literal(rules);
        SCOPED_TRACE("seed " + std::to_string(round));
        for (int n = 0; n < 60 && !HasFailure(); ++n) {
            const std::string text = generator.text(rules);
            expectSame(prepared, literal, text);
            changed += prepared.apply(text) != text;
        }
    }
    EXPECT_GT(changed, rounds * 15) << "the texts hardly meet the rules";
}

TEST(TextCorrectionsDifferential, MarksOfEveryCodePointAreThoseOfTheRegularExpressions) {
    icu::UnicodeString all;
    for (UChar32 c = 0; c <= 0x10FFFF; ++c)
        if (!U_IS_SURROGATE(c)) all.append(c);
    const auto matching = [&all](const char16_t* pattern) {
        UErrorCode status = U_ZERO_ERROR;
        icu::RegexMatcher matcher(pattern, all, UREGEX_CASE_INSENSITIVE, status);
        std::vector<bool> result(0x110000);
        while (matcher.find(status))
            result[static_cast<std::size_t>(all.char32At(matcher.start(status)))] = true;
        return result;
    };
    const auto isWord = matching(u"[\\p{L}\\p{M}\\p{N}_]");
    const auto isSpace = matching(u"\\s");
    text::Tokens tokens;
    for (UChar32 c = 0; c <= 0x10FFFF && !HasFailure(); ++c) {
        if (U_IS_SURROGATE(c)) continue;
        const auto index = static_cast<std::size_t>(c);
        tokens.assign(utf8(c));
        ASSERT_EQ(tokens.all().empty(), isSpace[index]) << std::hex << c;
        if (isSpace[index]) continue;
        const auto token = tokens.all().front();
        ASSERT_EQ(token.isWord, isWord[index]) << std::hex << c;
        icu::UnicodeString folded(c);
        folded.foldCase();
        ASSERT_EQ(tokens.folded(token), utf8(folded)) << std::hex << c;
        // Folding must not change where a text is split.
        for (int32_t i = 0; i < folded.length(); i = folded.moveIndex32(i, 1))
            ASSERT_EQ(isWord[static_cast<std::size_t>(folded.char32At(i))], isWord[index])
                << std::hex << c;
    }
}

}  // namespace
}  // namespace quorvi::test
