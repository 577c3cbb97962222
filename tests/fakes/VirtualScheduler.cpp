#include "tests/fakes/VirtualScheduler.h"

#include <algorithm>
#include <utility>

namespace quorvi::test {

// Erases by identity: a repeating timer changes its due time while it lives.
struct VirtualScheduler::Node : Timer::Node {
    Node(std::weak_ptr<Timers> t, std::uint64_t i) : timers(std::move(t)), id(i) {}
    ~Node() override {
        if (auto all = timers.lock())
            std::erase_if(all->entries,
                          [this](const auto& item) { return item.first.second == id; });
    }
    std::weak_ptr<Timers> timers;
    std::uint64_t id;
};

Date VirtualScheduler::date() const {
    return {800'000'000.0 + std::chrono::duration<double>(now_.time_since_epoch()).count()};
}

Timer VirtualScheduler::after(Duration delay, std::function<void()> work) {
    return schedule(delay, {std::move(work), Duration::zero()});
}

Timer VirtualScheduler::every(Duration period, std::function<void()> work) {
    return schedule(period, {std::move(work), period});
}

Timer VirtualScheduler::schedule(Duration delay, Entry entry) {
    const auto id = ++lastId_;
    timers_->entries.emplace(Key{now_ + delay, id}, std::move(entry));
    return Timer(std::make_unique<Node>(timers_, id));
}

std::vector<Duration> VirtualScheduler::timers() const {
    std::vector<Duration> periods;
    for (const auto& [key, entry] : timers_->entries) periods.push_back(entry.period);
    std::ranges::sort(periods);
    return periods;
}

void VirtualScheduler::settle() {
    advance(Duration::zero());
}

void VirtualScheduler::advance(Duration by) {
    const auto end = now_ + by;
    for (;;) {
        while (!posted_.empty()) {
            auto work = std::move(posted_.front());
            posted_.pop_front();
            work();
        }
        auto& entries = timers_->entries;
        if (entries.empty() || entries.begin()->first.first > end) break;
        const auto [key, entry] = *entries.begin();
        now_ = std::max(now_, key.first);
        entries.erase(entries.begin());
        if (entry.period > Duration::zero())
            entries.emplace(Key{key.first + entry.period, key.second}, entry);
        entry.work();
    }
    now_ = std::max(now_, end);
}

}  // namespace quorvi::test
