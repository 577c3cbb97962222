#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/corrections/TextCorrection.h"

namespace quorvi {

// An immutable list of rules in order of priority, prepared so that applying ten thousand rules
// costs little more than applying ten. Copies share the prepared form. Thread-safe.
class TextCorrections {
public:
    struct Result {
        std::string text;
        std::vector<TextCorrection> appliedRules;  // distinct, in order of first use
    };

    TextCorrections();
    explicit TextCorrections(std::vector<TextCorrection> rules);

    const std::vector<TextCorrection>& rules() const;

    // Whether both are copies of one list; cheaper than comparing.
    bool isSharedWith(const TextCorrections& other) const { return prepared_ == other.prepared_; }

    // Returns the corrected text and the rules that changed it. The text is returned byte for byte
    // if no rule matches, otherwise in Form C.
    Result applying(std::string_view transcript) const;
    std::string apply(std::string_view transcript) const { return applying(transcript).text; }

private:
    struct Prepared;
    std::shared_ptr<const Prepared> prepared_;
};

}  // namespace quorvi
