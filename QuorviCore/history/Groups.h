#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <unordered_map>
#include <utility>

namespace quorvi {

// Running totals for each of a few keys that come up again and again, in the order in which they
// came first. `isSame(a, b)` may only hold for equal keys and need not hold for all of them; it is
// asked first because it is quicker than comparing.
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
