#include "QuorviCore/history/DictationRecord.h"

#include <cmath>
#include <utility>

#include "QuorviCore/text/Characters.h"
#include "QuorviCore/text/Folding.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi {

namespace {

double timeSpan(double seconds) {
    return std::isfinite(seconds) && seconds > 0 ? seconds : 0;
}

bool isApostrophe(std::string_view character) {
    return character == "'" || character == "\u2019";
}

// Calls visit(character) for each user-perceived character.
template <class Visit>
void forEachCharacter(std::string_view text, Visit visit) {
    for (std::size_t at = 0; at < text.size();) {
        const bool isPlain = static_cast<unsigned char>(text[at]) < 0x80 && at + 1 < text.size() &&
                             static_cast<unsigned char>(text[at + 1]) < 0x80;
        const std::size_t end = isPlain ? at + 1 : text::nextCharacter(text, at);
        visit(text.substr(at, end - at));
        at = end;
    }
}

}  // namespace

DictationRecord DictationRecord::make(Uuid id, Date date, std::string_view text,
                                      double audioSeconds, std::string_view appName,
                                      std::string_view language, bool keepText,
                                      std::optional<DictationCostEstimate> costEstimate) {
    return {.id = id,
            .date = date,
            .text = keepText ? std::optional<SharedString>(text) : std::nullopt,
            .wordCount = countWords(text),
            .audioSeconds = timeSpan(audioSeconds),
            .appName = appName,
            .language = language,
            .costEstimate = std::move(costEstimate)};
}

std::int64_t DictationRecord::countWords(std::string_view text) {
    std::int64_t count = 0;
    bool counted = false;  // of the current word
    forEachCharacter(text, [&](std::string_view character) {
        if (text::isLetterOrNumber(character, 0)) {
            count += counted ? 0 : 1;
            counted = true;
        } else if (!isApostrophe(character)) {
            counted = false;
        }
    });
    return count;
}

bool DictationRecord::matches(std::string_view query) const {
    if (text::trimmed(query).empty()) return true;
    const std::string wanted = text::searchFolded(query);
    return (text && text::searchFolded(*text).find(wanted) != std::string::npos) ||
           text::searchFolded(appName).find(wanted) != std::string::npos;
}

double DictationRecord::countedSeconds() const {
    return timeSpan(audioSeconds);
}

}  // namespace quorvi
