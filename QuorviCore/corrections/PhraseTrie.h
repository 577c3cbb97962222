#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/text/Tokens.h"

namespace quorvi {

// An open-addressed hash table from hashes to numbers below 2^32. The caller resolves collisions.
// Insert-only.
class HashIndex {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    void reserve(std::size_t count);
    void insert(std::uint32_t hash, std::uint32_t value);

    template <class Equal>
    std::uint32_t find(std::uint32_t hash, Equal equal) const {
        if (slots_.empty()) return none;
        for (std::size_t i = hash & mask();; i = (i + 1) & mask()) {
            const Slot& slot = slots_[i];
            if (slot.value == none) return none;
            if (slot.hash == hash && equal(slot.value)) return slot.value;
        }
    }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t value = none;
    };

    std::size_t mask() const { return slots_.size() - 1; }
    void place(Slot slot);
    void grow(std::size_t capacity);

    std::vector<Slot> slots_;
    std::size_t count_ = 0;
};

// The phrases of a rule list as a trie over tokens. White space is not a token: a step records
// whether its token follows white space. Built once; then immutable and thread-safe.
class PhraseTrie {
public:
    static constexpr std::uint32_t none = HashIndex::none;

    struct Node {
        std::uint32_t parent;
        std::uint32_t step;         // token and whether it follows white space
        std::uint32_t rule = none;  // the first rule whose phrase ends here
        std::uint32_t overlap = none;
    };

    void reserve(std::size_t phrases);

    // Inserts a phrase of at least one token. The first of equal phrases stays.
    void insert(const text::Tokens& phrase, std::uint32_t rule);

    // Returns the number of a token in the trie; `none` if it is unknown.
    std::uint32_t tokenNumber(const text::Tokens& text, const text::Token& token) const {
        return tokenIndex_.find(token.hash, [&](std::uint32_t n) {
            return spelling(tokens_[n]) == text.folded(token);
        });
    }
    // Returns the node for phrases that begin with the token, or `none`.
    std::uint32_t root(std::uint32_t token) const { return tokens_[token].root; }
    std::uint32_t child(std::uint32_t node, std::uint32_t token, bool followsSpace) const {
        const std::uint32_t step = stepOf(token, followsSpace);
        return nodeIndex_.find(hashOf(node, step), [&](std::uint32_t n) {
            return nodes_[n].parent == node && nodes_[n].step == step;
        });
    }
    const Node& node(std::uint32_t n) const { return nodes_[n]; }

    // Phrases whose matches can overlap are numbered from 0 in Node::overlap.
    std::uint32_t overlapCount() const { return overlapCount_; }

private:
    struct Token {
        std::uint32_t begin;
        std::uint32_t length;
        std::uint32_t root = none;
    };

    static std::uint32_t stepOf(std::uint32_t token, bool followsSpace) {
        return token << 1 | static_cast<std::uint32_t>(followsSpace);
    }
    static std::uint32_t hashOf(std::uint32_t node, std::uint32_t step) {
        std::uint64_t h = (std::uint64_t{node} << 32 | step) * 0x9E3779B97F4A7C15U;
        return static_cast<std::uint32_t>((h ^ (h >> 29)) >> 16);
    }
    std::string_view spelling(const Token& token) const {
        return std::string_view(spellings_).substr(token.begin, token.length);
    }
    std::uint32_t addToken(const text::Tokens& phrase, const text::Token& token);
    std::uint32_t addNode(std::uint32_t parent, std::uint32_t step);

    std::string spellings_;
    std::vector<Token> tokens_;
    HashIndex tokenIndex_;
    std::vector<Node> nodes_;
    HashIndex nodeIndex_;
    std::uint32_t overlapCount_ = 0;
};

}  // namespace quorvi
