#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <unordered_map>
#include <utility>

namespace quorvi {

// Totals by key for a few keys that recur, in order of first appearance. `isSame(a, b)` is a cheap
// test that may miss equal keys but never matches different ones; it is tried first.
template <class Key, class Totals>
class Groups {
public:
    template <class IsSame>
    Totals& of(const Key& key, IsSame isSame) {
        const auto asked = std::min(entries_.size(), quicklyAsked);
        for (std::size_t i = 0; i < asked; ++i)
            if (isSame(entries_[i].first, key)) return entries_[i].second;
        const auto [found, isNew] = positions_.try_emplace(key, entries_.size());
        if (isNew) entries_.emplace_back(key, Totals{});
        return entries_[found->second].second;
    }
    const std::deque<std::pair<Key, Totals>>& all() const { return entries_; }

private:
    static constexpr std::size_t quicklyAsked = 16;

    std::deque<std::pair<Key, Totals>> entries_;
    std::unordered_map<Key, std::size_t> positions_;
};

}  // namespace quorvi
