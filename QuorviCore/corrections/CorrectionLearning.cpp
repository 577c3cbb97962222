#include "QuorviCore/corrections/CorrectionLearning.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "QuorviCore/corrections/TextCorrections.h"
#include "QuorviCore/text/Characters.h"
#include "QuorviCore/text/Folding.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/text/Transliteration.h"
#include "QuorviCore/text/Words.h"

namespace quorvi {

namespace {

constexpr std::size_t learnedPhraseLimit = 80;  // characters
constexpr std::size_t learnedWordLimit = 5;

struct Change {
    std::string_view from;
    std::string_view to;
};

// Bytes that two texts share at both ends.
struct SharedEnds {
    std::size_t start;
    std::size_t end;
};

bool hasWordAt(std::string_view s, std::size_t offset, std::size_t limit) {
    return offset < limit && text::isWordCharacter(s, offset);
}

// Shrinks the shared parts to whole words.
void widenToWords(std::string_view a, std::string_view b, SharedEnds& shared) {
    while (shared.start > 0) {
        const std::size_t before = text::previousCharacter(a, shared.start);
        if (!text::isWordCharacter(a, before)) break;
        if (!hasWordAt(a, shared.start, a.size()) && !hasWordAt(b, shared.start, b.size())) break;
        shared.start = before;
    }
    const auto endsInWord = [&shared](std::string_view s) {
        const std::size_t end = s.size() - shared.end;
        return end > shared.start && text::isWordCharacter(s, text::previousCharacter(s, end));
    };
    while (shared.end > 0) {
        const std::size_t first = a.size() - shared.end;
        if (!text::isWordCharacter(a, first) || !(endsInWord(a) || endsInWord(b))) break;
        shared.end = a.size() - text::nextCharacter(a, first);
    }
}

// Returns the words that differ between two texts in Form C.
Change changedWords(std::string_view a, std::string_view b) {
    SharedEnds shared{.start = text::sharedStart(a, b), .end = 0};
    shared.end = text::sharedEnd(a, b, shared.start);
    widenToWords(a, b, shared);
    const auto middle = [&shared](std::string_view s) {
        return text::trimmed(s.substr(shared.start, s.size() - shared.end - shared.start));
    };
    return {middle(a), middle(b)};
}

bool isLearnable(std::string_view phrase) {
    return !phrase.empty() && text::characterCount(phrase) <= learnedPhraseLimit &&
           !text::containsLineBreak(phrase) && text::words(phrase).size() <= learnedWordLimit &&
           text::containsLetter(phrase);
}

// Returns the letters and numbers of a phrase without case, accents and script.
std::string comparisonKey(std::string_view phrase) {
    return text::withoutDiacritics(TextCorrection::matchKey(text::toLatin(phrase)));
}

std::vector<std::string_view> lettersAndNumbers(std::string_view key) {
    std::vector<std::string_view> result;
    for (std::size_t i = 0; i < key.size();) {
        const std::size_t end = text::nextCharacter(key, i);
        if (text::isLetterOrNumber(key, i)) result.push_back(key.substr(i, end - i));
        i = end;
    }
    return result;
}

std::size_t editDistance(const std::vector<std::string_view>& from,
                         const std::vector<std::string_view>& to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const auto character : from) {
        std::size_t diagonal = row[0]++;
        for (std::size_t i = 1; i < row.size(); ++i) {
            const std::size_t substituted = diagonal + (character == to[i - 1] ? 0 : 1);
            diagonal = row[i];
            row[i] = std::min({substituted, row[i] + 1, row[i - 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

std::optional<TextCorrection> CorrectionLearning::suggestion(std::string_view original,
                                                             std::string_view edited, Date now) {
    const std::string a = text::toNfc(original);
    const std::string b = text::toNfc(edited);
    if (a == b || a.empty() || b.empty()) return std::nullopt;
    const Change change = changedWords(a, b);
    if (!isLearnable(change.from) || !isLearnable(change.to)) return std::nullopt;
    if (!resemblesSpellingChange(change.from, change.to)) return std::nullopt;
    TextCorrection rule{.original = std::string(change.from),
                        .replacement = std::string(change.to),
                        .learnedAutomatically = true,
                        .updatedAt = now};
    if (rule.validationMessage()) return std::nullopt;
    // Refuses rules that would change other text, and edits that whole words cannot express.
    if (text::toNfc(TextCorrections({rule}).apply(a)) != b) return std::nullopt;
    return rule;
}

bool CorrectionLearning::resemblesSpellingChange(std::string_view from, std::string_view to) {
    const std::string fromKey = comparisonKey(from);
    const std::string toKey = comparisonKey(to);
    const auto fromLetters = lettersAndNumbers(fromKey);
    const std::size_t limit = fromLetters.size() > 5 ? fromLetters.size() / 3 : 2;
    return editDistance(fromLetters, lettersAndNumbers(toKey)) <= limit;
}

}  // namespace quorvi
