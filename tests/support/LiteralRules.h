#pragma once

#include <unicode/normalizer2.h>
#include <unicode/regex.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/corrections/TextCorrections.h"

namespace quorvi::test {

// What applying rules means, said with one regular expression for each rule: slow, and the
// reference that the prepared form is compared with. For one thread.
class LiteralRules {
public:
    explicit LiteralRules(std::vector<TextCorrection> rules) : rules_(std::move(rules)) {
        for (std::size_t i = 0; i < rules_.size(); ++i) {
            if (!rules_[i].isEnabled || rules_[i].validationMessage()) continue;
            UErrorCode status = U_ZERO_ERROR;
            auto matcher = std::make_unique<icu::RegexMatcher>(patternOf(rules_[i].original),
                                                               UREGEX_CASE_INSENSITIVE, status);
            if (U_SUCCESS(status)) compiled_.push_back({i, std::move(matcher)});
        }
    }

    TextCorrections::Result applying(std::string_view transcript) {
        const icu::UnicodeString text = nfc(icu::UnicodeString::fromUTF8(piece(transcript)));
        std::vector<Match> matches = matchesIn(text);
        if (matches.empty()) return {std::string(transcript), {}};
        std::stable_sort(matches.begin(), matches.end(), [](const Match& a, const Match& b) {
            if (a.begin != b.begin) return a.begin < b.begin;
            if (a.end != b.end) return a.end > b.end;
            return a.rule < b.rule;
        });
        TextCorrections::Result result;
        int32_t cursor = 0;
        for (const Match& match : matches) {
            if (match.begin < cursor) continue;
            text.tempSubStringBetween(cursor, match.begin).toUTF8String(result.text);
            const TextCorrection& rule = rules_[match.rule];
            result.text += rule.replacement;
            if (std::ranges::find(result.appliedRules, rule.id, &TextCorrection::id) ==
                result.appliedRules.end())
                result.appliedRules.push_back(rule);
            cursor = match.end;
        }
        text.tempSubStringBetween(cursor, text.length()).toUTF8String(result.text);
        return result;
    }

    static icu::UnicodeString patternOf(std::string_view phrase) {
        const icu::UnicodeString text = nfc(icu::UnicodeString::fromUTF8(piece(phrase)));
        const icu::UnicodeString special = u"*?+[](){}^$|\\./";
        icu::UnicodeString joined;
        bool pendingSpace = false;
        for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
            const UChar32 c = text.char32At(i);
            if (u_isUWhiteSpace(c)) {
                pendingSpace = true;
                continue;
            }
            if (pendingSpace && !joined.isEmpty()) joined += u"\\s+";
            pendingSpace = false;
            if (special.indexOf(c) >= 0) joined += u'\\';
            joined += c;
        }
        return u"(?<![\\p{L}\\p{M}\\p{N}_])(?:" + joined + u")(?![\\p{L}\\p{M}\\p{N}_])";
    }

private:
    struct Compiled {
        std::size_t rule;
        std::unique_ptr<icu::RegexMatcher> matcher;
    };
    struct Match {
        int32_t begin;
        int32_t end;
        std::size_t rule;
    };

    static icu::StringPiece piece(std::string_view s) {
        return {s.data(), static_cast<int32_t>(s.size())};
    }
    static icu::UnicodeString nfc(const icu::UnicodeString& s) {
        UErrorCode status = U_ZERO_ERROR;
        return icu::Normalizer2::getNFCInstance(status)->normalize(s, status);
    }
    std::vector<Match> matchesIn(const icu::UnicodeString& text) {
        std::vector<Match> matches;
        for (const Compiled& compiled : compiled_) {
            compiled.matcher->reset(text);
            UErrorCode status = U_ZERO_ERROR;
            while (compiled.matcher->find(status)) {
                const int32_t begin = compiled.matcher->start(status);
                matches.push_back({begin, compiled.matcher->end(status), compiled.rule});
            }
            if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
        }
        return matches;
    }

    std::vector<TextCorrection> rules_;
    std::vector<Compiled> compiled_;
};

}  // namespace quorvi::test
