#pragma once

#include "Quorvi/platform/SyncControl.h"

namespace quorvi::test {

// Synchronisation whose state the test sets, and which counts the passes asked for.
class FakeSyncControl : public SyncControl {
public:
    struct State {
        bool enabled = false;
        Message status = say::syncOff();
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
    const Message& status() const override { return state_.status; }
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
