#include "QuorviCore/async/TimerQueue.h"

#include <algorithm>

namespace quorvi {

// Erases by id: a repeating timer changes its due time.
struct TimerQueue::Node : Timer::Node {
    Node(std::weak_ptr<Entries> e, std::uint64_t i) : entries(std::move(e)), id(i) {}
    ~Node() override {
        if (const auto all = entries.lock()) all->erase(id);
    }
    std::weak_ptr<Entries> entries;
    std::uint64_t id;
};

void TimerQueue::Entries::insert(std::uint64_t id, TimePoint due, Entry entry) {
    byDue.emplace(Key{due, id}, std::move(entry));
    dueById.emplace(id, due);
}

void TimerQueue::Entries::erase(std::uint64_t id) {
    const auto found = dueById.find(id);
    if (found == dueById.end()) return;
    // Taken out first: destroying the work may destroy another timer.
    const auto erased = byDue.extract(Key{found->second, id});
    dueById.erase(found);
}

Timer TimerQueue::add(TimePoint due, Duration period, std::function<void()> work) {
    const auto id = ++entries_->lastId;
    entries_->insert(id, due, {std::move(work), period});
    return Timer(std::make_unique<Node>(entries_, id));
}

std::optional<TimePoint> TimerQueue::firstDue() const {
    if (entries_->byDue.empty()) return std::nullopt;
    return entries_->byDue.begin()->first.first;
}

std::function<void()> TimerQueue::takeFirst(TimePoint last) {
    const auto [key, entry] = *entries_->byDue.begin();
    entries_->erase(key.second);
    if (entry.period > Duration::zero()) entries_->insert(key.second, last + entry.period, entry);
    return entry.work;
}

std::vector<Duration> TimerQueue::periods() const {
    std::vector<Duration> periods;
    for (const auto& [key, entry] : entries_->byDue) periods.push_back(entry.period);
    std::ranges::sort(periods);
    return periods;
}

}  // namespace quorvi
