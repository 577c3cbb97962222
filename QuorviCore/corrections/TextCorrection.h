#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/identity/Uuid.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// One correction rule: when the service writes `original`, write `replacement` instead.
struct TextCorrection {
    static constexpr std::size_t phraseLimit = 160;  // user-perceived characters

    std::string id = newUuid();
    std::string original;
    std::string replacement;  // written unchanged
    bool isEnabled = true;
    bool learnedAutomatically = false;
    Date updatedAt{};  // set at every save

    // Returns what is wrong with the rule; nullopt if it is valid.
    std::optional<Message> validationMessage() const;

    // Returns the normalised form of a phrase. Two rules are about the same phrase if the keys of
    // their originals are equal.
    static std::string matchKey(std::string_view phrase);

    // Compares all fields, texts by canonical equivalence.
    bool operator==(const TextCorrection& other) const;
};

}  // namespace quorvi
