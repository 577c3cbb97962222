#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

// One correction rule: when the service writes `original`, write `replacement` instead.
struct TextCorrection {
    static constexpr std::size_t phraseLimit = 160;  // user-perceived characters

    std::string id = newUuid();
    std::string original;
    std::string replacement;  // written exactly as it stands
    bool isEnabled = true;
    bool learnedAutomatically = false;
    Date updatedAt{};  // set at every save

    // What is wrong with the rule, as a sentence for the user; nothing when it is acceptable.
    std::optional<std::string> validationMessage() const;

    // The normalised form of a phrase. Two rules concern the same phrase when the keys of their
    // originals are equal.
    static std::string matchKey(std::string_view phrase);

    // All fields are the same, the texts under canonical equivalence.
    bool operator==(const TextCorrection& other) const;
};

}  // namespace quorvi
