#pragma once

#include <utility>

#include "Quorvi/platform/Network.h"

namespace quorvi::test {

// A network that comes back when the test says so.
class FakeNetwork : public Network {
public:
    Subscription onReturn(std::function<void()> observer) override {
        return returns_.subscribe(std::move(observer));
    }
    void comeBack() { returns_.notify(); }

private:
    Observable returns_;
};

}  // namespace quorvi::test
