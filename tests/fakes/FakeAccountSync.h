#pragma once

#include <string>

#include "Quorvi/platform/AccountSyncing.h"

namespace quorvi::test {

// A synchronisation whose state the test sets, and which counts what it is asked for.
class FakeAccountSync : public AccountSyncing {
public:
    struct State {
        bool enabled = false;
        std::string status = "Sync paused on this Mac";
        std::size_t pendingCount = 0;
        std::optional<Date> lastSynced;
        bool working = false;
    };

    Subscription onChange(std::function<void()> observer) override {
        return changes_.subscribe(std::move(observer));
    }
    bool enabled() const override { return state_.enabled; }
    void setEnabled(bool enabled) override {
        state_.enabled = enabled;
        changes_.notify();
    }
    const std::string& status() const override { return state_.status; }
    std::size_t pendingCount() const override { return state_.pendingCount; }
    std::optional<Date> lastSynced() const override { return state_.lastSynced; }
    bool working() const override { return state_.working; }
    void syncNow() override { ++passes; }
    void shutdown() override {}

    void set(State state) {
        state_ = std::move(state);
        changes_.notify();
    }

    int passes = 0;

private:
    State state_;
    Observable changes_;
};

}  // namespace quorvi::test
