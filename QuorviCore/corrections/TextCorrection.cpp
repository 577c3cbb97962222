#include "QuorviCore/corrections/TextCorrection.h"

#include "QuorviCore/text/Folding.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/text/Words.h"

namespace quorvi {

std::optional<Message> TextCorrection::validationMessage() const {
    const std::string_view from = text::trimmed(original);
    const std::string_view to = text::trimmed(replacement);
    if (from.empty() || to.empty()) return say::correctionIncomplete();
    if (text::hasMoreCharacters(from, phraseLimit) || text::hasMoreCharacters(to, phraseLimit))
        return say::correctionTooLong();
    return std::nullopt;
}

std::string TextCorrection::matchKey(std::string_view phrase) {
    // Folding can leave Form C, and keys are compared byte by byte.
    return text::toNfc(text::caseFolded(text::withSingleSpaces(text::toNfc(phrase))));
}

bool TextCorrection::operator==(const TextCorrection& other) const {
    return id == other.id && isEnabled == other.isEnabled &&
           learnedAutomatically == other.learnedAutomatically && updatedAt == other.updatedAt &&
           text::equal(original, other.original) && text::equal(replacement, other.replacement);
}

}  // namespace quorvi
