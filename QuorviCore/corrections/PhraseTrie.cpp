#include "QuorviCore/corrections/PhraseTrie.h"

#include <bit>

namespace quorvi {

void HashIndex::reserve(std::size_t count) {
    const std::size_t capacity = std::bit_ceil(count * 4 / 3 + 1);
    if (capacity > slots_.size()) grow(capacity);
}

void HashIndex::insert(std::uint32_t hash, std::uint32_t value) {
    if ((count_ + 1) * 4 > slots_.size() * 3) grow(slots_.empty() ? 8 : slots_.size() * 2);
    place({hash, value});
    ++count_;
}

void HashIndex::place(Slot slot) {
    std::size_t i = slot.hash & mask();
    while (slots_[i].value != none) i = (i + 1) & mask();
    slots_[i] = slot;
}

void HashIndex::grow(std::size_t capacity) {
    std::vector<Slot> old(capacity);
    old.swap(slots_);
    for (const Slot& slot : old)
        if (slot.value != none) place(slot);
}

void PhraseTrie::reserve(std::size_t phrases) {
    nodes_.reserve(phrases * 2);
    tokens_.reserve(phrases);
    spellings_.reserve(phrases * 8);
    tokenIndex_.reserve(phrases);
    nodeIndex_.reserve(phrases);
}

void PhraseTrie::insert(const text::Tokens& phrase, std::uint32_t rule) {
    const auto all = phrase.all();
    const std::uint32_t first = addToken(phrase, all.front());
    std::uint32_t node = root(first);
    if (node == none) node = tokens_[first].root = addNode(none, first << 1);
    bool firstReturns = false;
    for (const auto& token : all.subspan(1)) {
        const std::uint32_t number = addToken(phrase, token);
        firstReturns = firstReturns || number == first;
        const std::uint32_t next = child(node, number, token.followsSpace);
        node = next != none ? next : addNode(node, stepOf(number, token.followsSpace));
    }
    if (nodes_[node].rule != none) return;
    nodes_[node].rule = rule;
    // Matches can overlap only if the first token recurs within the phrase.
    if (firstReturns) nodes_[node].overlap = overlapCount_++;
}

std::uint32_t PhraseTrie::addToken(const text::Tokens& phrase, const text::Token& token) {
    const std::uint32_t known = tokenNumber(phrase, token);
    if (known != none) return known;
    const std::string_view folded = phrase.folded(token);
    const auto number = static_cast<std::uint32_t>(tokens_.size());
    tokens_.push_back(
        {static_cast<std::uint32_t>(spellings_.size()), static_cast<std::uint32_t>(folded.size())});
    spellings_ += folded;
    tokenIndex_.insert(token.hash, number);
    return number;
}

std::uint32_t PhraseTrie::addNode(std::uint32_t parent, std::uint32_t step) {
    const auto number = static_cast<std::uint32_t>(nodes_.size());
    nodes_.push_back({.parent = parent, .step = step});
    if (parent != none) nodeIndex_.insert(hashOf(parent, step), number);
    return number;
}

}  // namespace quorvi
