#include "QuorviCore/corrections/TextCorrections.h"

#include <algorithm>
#include <functional>

#include "QuorviCore/corrections/PhraseTrie.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/text/Tokens.h"

namespace quorvi {

struct TextCorrections::Prepared {
    std::vector<TextCorrection> rules;
    PhraseTrie phrases;
};

namespace {

struct Applied {
    std::uint32_t rule;
    std::size_t idHash;
};

// Reused per thread, because fresh memory pages cost more than the work itself.
struct Scratch {
    text::Tokens tokens;
    std::vector<std::uint32_t> numbers;  // of the tokens, as the trie knows them
    std::vector<std::uint32_t>
        overlapEnds;               // for each self-overlapping phrase: end of its last match
    std::vector<Applied> applied;  // in order of first use
};

Scratch& scratch() {
    thread_local Scratch kept;
    return kept;
}

// Finds the matches of all phrases in a text, from left to right. A phrase matches whole words
// only: no letter, mark, number or underscore may precede or follow it.
class Matcher {
public:
    Matcher(const PhraseTrie& phrases, Scratch& s)
        : phrases_(phrases), tokens_(s.tokens.all()), numbers_(s.numbers), ends_(s.overlapEnds) {
        numbers_.clear();
        for (const auto& token : tokens_) numbers_.push_back(phrases_.tokenNumber(s.tokens, token));
        ends_.assign(phrases_.overlapCount(), 0);
    }

    struct Match {
        std::uint32_t rule = PhraseTrie::none;
        std::size_t end = 0;  // index of the next token
    };

    // Whether matched text must be searched as well, because a phrase can have a match there that
    // excludes a later match of the same phrase.
    bool looksInsideMatches() const { return !ends_.empty(); }

    // Returns the longest match that begins at the token.
    Match longestAt(std::size_t start) {
        Match best;
        if (numbers_[start] == PhraseTrie::none || joinsWord(start)) return best;
        std::uint32_t node = phrases_.root(numbers_[start]);
        for (std::size_t end = start + 1; node != PhraseTrie::none; ++end) {
            if (accepts(phrases_.node(node), start, end)) best = {phrases_.node(node).rule, end};
            if (end == tokens_.size() || numbers_[end] == PhraseTrie::none) break;
            node = phrases_.child(node, numbers_[end], tokens_[end].followsSpace);
        }
        return best;
    }

private:
    // Whether the symbol at `at` directly follows a word.
    bool joinsWord(std::size_t at) const {
        return at > 0 && tokens_[at - 1].isWord && !tokens_[at].isWord && !tokens_[at].followsSpace;
    }
    bool accepts(const PhraseTrie::Node& node, std::size_t start, std::size_t end) {
        if (node.rule == PhraseTrie::none) return false;
        if (end < tokens_.size() && tokens_[end].isWord && !tokens_[end].followsSpace) return false;
        if (node.overlap == PhraseTrie::none) return true;
        if (start < ends_[node.overlap]) return false;
        ends_[node.overlap] = static_cast<std::uint32_t>(end);
        return true;
    }

    const PhraseTrie& phrases_;
    std::span<const text::Token> tokens_;
    std::vector<std::uint32_t>& numbers_;
    std::vector<std::uint32_t>& ends_;
};

void noteApplied(const std::vector<TextCorrection>& rules, std::uint32_t rule,
                 std::vector<Applied>& applied) {
    const std::string& id = rules[rule].id;
    const std::size_t hash = std::hash<std::string>{}(id);
    const auto isSame = [&](const Applied& other) {
        return other.idHash == hash && rules[other.rule].id == id;
    };
    if (std::ranges::none_of(applied, isSame)) applied.push_back({rule, hash});
}

}  // namespace

TextCorrections::TextCorrections() {
    static const auto empty = std::make_shared<const Prepared>();
    prepared_ = empty;
}

TextCorrections::TextCorrections(std::vector<TextCorrection> rules) {
    auto prepared = std::make_shared<Prepared>();
    prepared->rules = std::move(rules);
    prepared->phrases.reserve(prepared->rules.size());
    auto& tokens = scratch().tokens;
    for (std::uint32_t i = 0; i < prepared->rules.size(); ++i) {
        const auto& rule = prepared->rules[i];
        if (!rule.isEnabled || rule.validationMessage()) continue;
        if (text::isNfc(rule.original))
            tokens.assign(rule.original);
        else
            tokens.assign(text::toNfc(rule.original));
        prepared->phrases.insert(tokens, i);
    }
    prepared_ = std::move(prepared);
}

const std::vector<TextCorrection>& TextCorrections::rules() const {
    return prepared_->rules;
}

TextCorrections::Result TextCorrections::applying(std::string_view transcript) const {
    std::string normalized;
    std::string_view text = transcript;
    if (!text::isNfc(transcript)) text = normalized = text::toNfc(transcript);

    Scratch& s = scratch();
    s.tokens.assign(text);
    s.applied.clear();
    const auto tokens = s.tokens.all();
    Matcher matcher(prepared_->phrases, s);
    Result result;
    std::size_t copied = 0;  // bytes of the text that are in the output
    std::size_t cursor = 0;  // the token behind the last replaced match
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const auto match = matcher.longestAt(i);
        if (match.rule == PhraseTrie::none || i < cursor) continue;
        if (s.applied.empty()) result.text.reserve(text.size() + text.size() / 4);
        noteApplied(prepared_->rules, match.rule, s.applied);
        result.text += text.substr(copied, tokens[i].begin - copied);
        result.text += prepared_->rules[match.rule].replacement;
        cursor = match.end;
        copied = tokens[cursor - 1].end;
        if (!matcher.looksInsideMatches()) i = cursor - 1;
    }
    if (s.applied.empty()) return {std::string(transcript), {}};
    result.text += text.substr(copied);
    result.appliedRules.reserve(s.applied.size());
    for (const Applied& applied : s.applied)
        result.appliedRules.push_back(prepared_->rules[applied.rule]);
    return result;
}

}  // namespace quorvi
