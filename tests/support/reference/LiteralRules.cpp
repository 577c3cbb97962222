#include "tests/support/reference/LiteralRules.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <stdexcept>
#include <string>

namespace quorvi::test {

LiteralRules::LiteralRules(const std::vector<TextCorrection>& rules) {
    for (const auto& rule : rules) {
        if (!rule.isEnabled || rule.validationMessage()) continue;
        UErrorCode status = U_ZERO_ERROR;
        auto matcher = std::make_unique<icu::RegexMatcher>(patternOf(rule.original),
                                                           UREGEX_CASE_INSENSITIVE, status);
        if (U_SUCCESS(status)) compiled_.push_back({rule, std::move(matcher)});
    }
}

TextCorrections::Result LiteralRules::applying(std::string_view transcript) {
    const icu::UnicodeString text = nfc(transcript);
    const std::vector<Match> matches = matchesIn(text);
    if (matches.empty()) return {std::string(transcript), {}};
    TextCorrections::Result result;
    int32_t cursor = 0;
    for (const auto& [begin, end, rule] : matches) {
        if (begin < cursor) continue;
        text.tempSubStringBetween(cursor, begin).toUTF8String(result.text);
        result.text += rule->replacement;
        const auto isSame = [&](const TextCorrection& other) { return other.id == rule->id; };
        if (std::ranges::none_of(result.appliedRules, isSame)) result.appliedRules.push_back(*rule);
        cursor = end;
    }
    text.tempSubStringBetween(cursor, text.length()).toUTF8String(result.text);
    return result;
}

icu::UnicodeString LiteralRules::nfc(std::string_view s) {
    UErrorCode status = U_ZERO_ERROR;
    return icu::Normalizer2::getNFCInstance(status)->normalize(
        icu::UnicodeString::fromUTF8({s.data(), static_cast<int32_t>(s.size())}), status);
}

icu::UnicodeString LiteralRules::patternOf(std::string_view phrase) {
    const icu::UnicodeString text = nfc(phrase);
    const icu::UnicodeString special = u"*?+[](){}^$|\\./";
    icu::UnicodeString joined;
    bool pendingSpace = false;
    for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        const UChar32 c = text.char32At(i);
        const bool isSpace = u_isUWhiteSpace(c);
        if (!isSpace && pendingSpace && !joined.isEmpty()) joined += u"\\s+";
        pendingSpace = isSpace;
        if (isSpace) continue;
        if (special.indexOf(c) >= 0) joined += u'\\';
        joined += c;
    }
    return u"(?<![\\p{L}\\p{M}\\p{N}_])(?:" + joined + u")(?![\\p{L}\\p{M}\\p{N}_])";
}

std::vector<LiteralRules::Match> LiteralRules::matchesIn(const icu::UnicodeString& text) {
    std::vector<Match> matches;
    for (const auto& [rule, matcher] : compiled_) {
        matcher->reset(text);
        UErrorCode status = U_ZERO_ERROR;
        while (matcher->find(status))
            matches.push_back({matcher->start(status), matcher->end(status), &rule});
        if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
    }
    std::ranges::stable_sort(matches, {},
                             [](const Match& m) { return std::pair(m.begin, -m.end); });
    return matches;
}

}  // namespace quorvi::test
