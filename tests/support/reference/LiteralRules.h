#pragma once

#include <unicode/regex.h>

#include <memory>
#include <string_view>
#include <vector>

#include "QuorviCore/corrections/TextCorrections.h"

namespace quorvi::test {

// What applying rules means, said with one regular expression for each rule: slow, and the
// reference that the prepared form is compared with. For one thread.
class LiteralRules {
public:
    explicit LiteralRules(const std::vector<TextCorrection>& rules);

    TextCorrections::Result applying(std::string_view transcript);

private:
    struct Compiled {
        TextCorrection rule;
        std::unique_ptr<icu::RegexMatcher> matcher;
    };
    struct Match {
        int32_t begin;
        int32_t end;
        const TextCorrection* rule;
    };

    static icu::UnicodeString nfc(std::string_view s);

    static icu::UnicodeString patternOf(std::string_view phrase);

    // The leftmost, then the longest, then the first rule's first.
    std::vector<Match> matchesIn(const icu::UnicodeString& text);

    std::vector<Compiled> compiled_;
};

}  // namespace quorvi::test
