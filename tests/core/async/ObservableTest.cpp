#include "QuorviCore/async/Observable.h"

#include <gtest/gtest.h>

#include <vector>

namespace quorvi::test {
namespace {

TEST(Observable, ObserversMayComeAndGoWhileBeingTold) {
    Observable observable;
    std::vector<int> told;
    Subscription second;
    auto first = observable.subscribe([&] {
        told.push_back(1);
        second = {};
    });
    second = observable.subscribe([&] { told.push_back(2); });
    observable.notify();
    observable.notify();
    EXPECT_EQ(told, (std::vector<int>{1, 1}));
}

}  // namespace
}  // namespace quorvi::test
