#include "Quorvi/platform/linux/posix/LoopScheduler.h"

#include <chrono>
#include <cstdint>
#include <utility>

namespace quorvi {

struct LoopScheduler::Timers {
    using Key = std::pair<TimePoint, std::uint64_t>;  // due time, then order of creation
    std::map<Key, Entry> entries;
    std::map<std::uint64_t, Key> keys;
    std::uint64_t lastId = 0;

    void add(std::uint64_t id, TimePoint due, Entry entry) {
        entries.emplace(Key{due, id}, std::move(entry));
        keys.insert_or_assign(id, Key{due, id});
    }
    void erase(std::uint64_t id) {
        if (auto found = keys.find(id); found != keys.end()) {
            entries.erase(found->second);
            keys.erase(found);
        }
    }
};

struct LoopScheduler::TimerNode : Timer::Node {
    TimerNode(std::weak_ptr<Timers> t, std::uint64_t i) : timers(std::move(t)), id(i) {}
    ~TimerNode() override {
        if (auto all = timers.lock()) all->erase(id);
    }
    std::weak_ptr<Timers> timers;
    std::uint64_t id;
};

LoopScheduler::LoopScheduler() : timers_(std::make_shared<Timers>()) {}
LoopScheduler::~LoopScheduler() = default;

TimePoint LoopScheduler::now() const {
    return std::chrono::steady_clock::now();
}

Date LoopScheduler::date() const {
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    return Date::fromUnixSeconds(std::chrono::duration<double>(since).count());
}

void LoopScheduler::post(std::function<void()> work) {
    {
        std::lock_guard lock(mutex_);
        posted_.push_back(std::move(work));
    }
    wake_.notify_one();
}

Timer LoopScheduler::after(Duration delay, std::function<void()> work) {
    return schedule(delay, {std::move(work), Duration::zero()});
}

Timer LoopScheduler::every(Duration period, std::function<void()> work) {
    return schedule(period, {std::move(work), period});
}

Timer LoopScheduler::schedule(Duration delay, Entry entry) {
    const auto id = ++timers_->lastId;
    timers_->add(id, now() + delay, std::move(entry));
    return Timer(std::make_unique<TimerNode>(timers_, id));
}

bool LoopScheduler::runTurn(TimePoint limit) {
    std::function<void()> work;
    {
        std::unique_lock lock(mutex_);
        auto until = limit;
        if (!timers_->entries.empty())
            until = std::min(until, timers_->entries.begin()->first.first);
        wake_.wait_until(lock, until, [this] { return !posted_.empty(); });
        if (!posted_.empty()) {
            work = std::move(posted_.front());
            posted_.pop_front();
        }
    }
    if (work) {
        work();
        return true;
    }
    if (timers_->entries.empty() || timers_->entries.begin()->first.first > now()) return false;
    const auto [key, entry] = *timers_->entries.begin();
    timers_->erase(key.second);
    if (entry.period > Duration::zero()) timers_->add(key.second, now() + entry.period, entry);
    entry.work();
    return true;
}

bool LoopScheduler::runUntil(const std::function<bool()>& done, Duration limit) {
    const auto end = now() + limit;
    while (!done()) {
        runTurn(end);
        if (now() >= end) return done();
    }
    return true;
}

void LoopScheduler::runFor(Duration limit) {
    runUntil([] { return false; }, limit);
}

}  // namespace quorvi
