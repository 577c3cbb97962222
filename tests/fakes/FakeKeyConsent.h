#pragma once

#include <utility>

#include "Quorvi/platform/KeyConsent.h"

namespace quorvi::test {

// A desktop whose answer the test gives.
class FakeKeyConsent : public KeyConsent {
public:
    State state() const override { return state_; }
    void setWanted(bool wanted) override { become(wanted ? State::asking : State::off); }
    Subscription onChange(std::function<void()> observer) override {
        return changes_.subscribe(std::move(observer));
    }
    void become(State state) {
        state_ = state;
        changes_.notify();
    }

private:
    State state_ = State::off;
    Observable changes_;
};

}  // namespace quorvi::test
