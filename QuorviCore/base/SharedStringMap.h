#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "QuorviCore/base/SharedString.h"

namespace quorvi {

// Lets any string type look up shared strings.
struct SharedStringHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>()(s); }
};
using SharedStringSet = std::unordered_set<SharedString, SharedStringHash, std::equal_to<>>;

// A hash map for hundreds of thousands of values: the entries lie next to each other, and an open
// table of their positions and hashes finds them, so that an entry costs ten bytes more than what
// is in it, and only a key that is found is read. With the functions of std::unordered_map that are
// needed here. Adding keeps references valid; removing moves the last entry to the gap.
template <class Value>
class SharedStringMap {
    struct Slot {
        std::uint32_t position = free;
        std::uint32_t hash = 0;
    };

public:
    using value_type = std::pair<SharedString, Value>;
    using iterator = typename std::deque<value_type>::iterator;
    using const_iterator = typename std::deque<value_type>::const_iterator;

    SharedStringMap() = default;
    SharedStringMap(std::initializer_list<value_type> entries) {
        for (const auto& [key, value] : entries) emplace(key, value);
    }
    SharedStringMap(const SharedStringMap&) = default;
    SharedStringMap(SharedStringMap&&) noexcept = default;
    SharedStringMap& operator=(const SharedStringMap&) = default;
    SharedStringMap& operator=(SharedStringMap&&) noexcept = default;

    iterator begin() { return entries_.begin(); }
    iterator end() { return entries_.end(); }
    const_iterator begin() const { return entries_.begin(); }
    const_iterator end() const { return entries_.end(); }
    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }

    iterator find(std::string_view key) { return begin() + offsetOf(key); }
    const_iterator find(std::string_view key) const { return begin() + offsetOf(key); }
    bool contains(std::string_view key) const { return find(key) != end(); }

    // Adds an entry unless there is one.
    std::pair<iterator, bool> emplace(const SharedString& key, Value value) {
        const auto found = find(key);
        if (found != end()) return {found, false};
        reserve(entries_.size() + 1);
        const auto position = static_cast<std::uint32_t>(entries_.size());
        entries_.emplace_back(key, std::move(value));
        place({position, hashOf(key)});
        return {end() - 1, true};
    }
    std::pair<iterator, bool> insert_or_assign(const SharedString& key, Value value) {
        const auto found = find(key);
        if (found == end()) return emplace(key, std::move(value));
        found->second = std::move(value);
        return {found, false};
    }
    Value& operator[](const SharedString& key) { return emplace(key, Value()).first->second; }
    std::size_t erase(std::string_view key) {
        const auto slot = slotOf(key);
        if (slot == none) return 0;
        const auto gap = slots_[slot].position;
        const auto last = static_cast<std::uint32_t>(entries_.size() - 1);
        if (gap != last) {
            slots_[slotOf(entries_[last].first)].position = gap;
            entries_[gap] = std::move(entries_[last]);
        }
        entries_.pop_back();
        close(slot);
        return 1;
    }
    void clear() { *this = {}; }
    void reserve(std::size_t count) {
        while (count > slots_.size() / 4 * 3) grow();
    }
    void swap(SharedStringMap& other) {
        entries_.swap(other.entries_);
        slots_.swap(other.slots_);
    }

    // The order of the entries does not count.
    bool operator==(const SharedStringMap& other) const {
        if (size() != other.size()) return false;
        for (const auto& [key, value] : *this) {
            const auto found = other.find(key);
            if (found == other.end() || !(found->second == value)) return false;
        }
        return true;
    }

private:
    static constexpr std::uint32_t free = UINT32_MAX;
    static constexpr std::size_t none = SIZE_MAX;

    static std::uint32_t hashOf(std::string_view key) {
        return static_cast<std::uint32_t>(SharedStringHash()(key));
    }
    std::size_t mask() const { return slots_.size() - 1; }

    std::size_t slotOf(std::string_view key) const {
        if (slots_.empty()) return none;
        const auto hash = hashOf(key);
        for (auto at = hash & mask(); slots_[at].position != free; at = (at + 1) & mask())
            if (slots_[at].hash == hash && entries_[slots_[at].position].first == key) return at;
        return none;
    }
    std::ptrdiff_t offsetOf(std::string_view key) const {
        const auto slot = slotOf(key);
        return static_cast<std::ptrdiff_t>(slot == none ? entries_.size() : slots_[slot].position);
    }
    void place(Slot slot) {
        auto at = slot.hash & mask();
        while (slots_[at].position != free) at = (at + 1) & mask();
        slots_[at] = slot;
    }
    void grow() {
        std::vector<Slot> old(slots_.empty() ? 8 : slots_.size() * 2);
        old.swap(slots_);
        for (const auto& slot : old)
            if (slot.position != free) place(slot);
    }
    // Frees a slot, and moves those behind it that would not be found any more.
    void close(std::size_t gap) {
        for (auto at = (gap + 1) & mask(); slots_[at].position != free; at = (at + 1) & mask()) {
            const auto wanted = slots_[at].hash & mask();
            if (((at - wanted) & mask()) < ((at - gap) & mask())) continue;
            slots_[gap] = slots_[at];
            gap = at;
        }
        slots_[gap] = {};
    }

    std::deque<value_type> entries_;
    std::vector<Slot> slots_;  // as many as a power of two; at least one is free
};

}  // namespace quorvi
