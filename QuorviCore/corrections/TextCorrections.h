#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/corrections/TextCorrection.h"

namespace quorvi {

// An ordered, immutable list of rules, prepared once so that applying it to a transcript costs
// nearly the same for ten rules and for ten thousand. The position of a rule is its priority: a
// lower index wins ties. Copies share the prepared form. Thread-safe.
class TextCorrections {
public:
    struct Result {
        std::string text;
        std::vector<TextCorrection> appliedRules;  // distinct, in order of first use
    };

    TextCorrections();
    explicit TextCorrections(std::vector<TextCorrection> rules);

    const std::vector<TextCorrection>& rules() const;

    // Whether both are copies of one list, which is quicker to see than that they are equal.
    bool isSharedWith(const TextCorrections& other) const { return prepared_ == other.prepared_; }

    // The corrected text and the rules that changed it. The text comes back byte for byte when no
    // rule matches, else in Form C.
    Result applying(std::string_view transcript) const;
    std::string apply(std::string_view transcript) const { return applying(transcript).text; }

private:
    struct Prepared;
    std::shared_ptr<const Prepared> prepared_;
};

}  // namespace quorvi
