#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace quorvi {

// Keeps an observer registered while it lives. May outlive the Observable.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<void> token) : token_(std::move(token)) {}

private:
    std::shared_ptr<void> token_;
};

// Notifies observers of a change; they re-read what they show. Main thread only. Observers may
// subscribe and unsubscribe while they are called.
class Observable {
public:
    [[nodiscard]] Subscription subscribe(std::function<void()> observer) {
        const auto id = ++observers_->nextId;
        observers_->list.emplace(id, std::make_shared<std::function<void()>>(std::move(observer)));
        std::weak_ptr<Observers> weak = observers_;
        return Subscription(std::shared_ptr<void>(nullptr, [weak, id](void*) {
            if (auto observers = weak.lock()) observers->list.erase(id);
        }));
    }

    void notify() const {
        const auto observers = observers_;
        const auto last = observers->nextId;
        for (std::uint64_t id = 0;;) {
            auto next = observers->list.upper_bound(id);
            if (next == observers->list.end() || next->first > last) return;
            id = next->first;
            const auto observer = next->second;
            (*observer)();
        }
    }

private:
    struct Observers {
        std::uint64_t nextId = 0;
        std::map<std::uint64_t, std::shared_ptr<std::function<void()>>> list;
    };
    std::shared_ptr<Observers> observers_ = std::make_shared<Observers>();
};

}  // namespace quorvi
