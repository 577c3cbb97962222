#pragma once

#include "Quorvi/platform/ClockChanges.h"

namespace quorvi::test {

class FakeClockChanges : public ClockChanges {
public:
    [[nodiscard]] Subscription onChange(std::function<void()> observer) override {
        return changes_.subscribe(std::move(observer));
    }
    void change() { changes_.notify(); }

private:
    Observable changes_;
};

}  // namespace quorvi::test
