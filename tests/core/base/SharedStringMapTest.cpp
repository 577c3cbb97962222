#include "QuorviCore/base/SharedStringMap.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace quorvi {
namespace {

TEST(SharedStringMap, HoldsWhatAnotherMapHolds) {
    std::mt19937 random(7);
    SharedStringMap<int> map;
    std::map<std::string, int> other;
    for (int step = 0; step < 50'000; ++step) {
        const auto key = std::to_string(random() % 500);
        switch (random() % 4) {
            case 0:
                EXPECT_EQ(map.emplace(key, step).second, other.emplace(key, step).second);
                break;
            case 1:
                map.insert_or_assign(key, step);
                other.insert_or_assign(key, step);
                break;
            default:
                EXPECT_EQ(map.erase(key), other.erase(key));
        }
        ASSERT_EQ(map.contains(key), other.contains(key));
        if (step % 50 != 0) continue;
        ASSERT_EQ(map.size(), other.size());
        for (const auto& [name, value] : other) ASSERT_EQ(map.find(name)->second, value);
    }
    auto copy = map;
    EXPECT_EQ(copy, map);
    copy.insert_or_assign("0", -1);
    EXPECT_NE(copy, map);
    copy.clear();
    EXPECT_TRUE(copy.empty() && copy.find("0") == copy.end());
}

}  // namespace
}  // namespace quorvi
