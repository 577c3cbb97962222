#pragma once

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "Quorvi/platform/Preferences.h"

// What all preferences promise. A rig supplies them, empty at first:
//   Preferences& preferences();
//   void reopen();   as the next start of the program finds them, where they outlive it
namespace quorvi::test {

template <class Rig>
class PreferencesContract : public testing::Test {
protected:
    Rig rig;
};
TYPED_TEST_SUITE_P(PreferencesContract);

TYPED_TEST_P(PreferencesContract, KeepsEachTypeExactlyAndReadsAnotherAsAbsent) {
    using namespace std::string_literals;
    const auto text = "Ωμέγα \0\1\x7F \uFFFF😀 "s;
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    this->rig.preferences().setString("string", text);
    this->rig.preferences().setBoolean("boolean", false);
    this->rig.preferences().setInteger("integer", least);
    this->rig.preferences().setBytes("bytes", {0, 0xFF});
    this->rig.preferences().setString("κλειδί", "");
    this->rig.reopen();
    const Preferences& kept = this->rig.preferences();
    EXPECT_EQ(kept.string("string"), text);
    EXPECT_EQ(kept.boolean("boolean"), false);
    EXPECT_EQ(kept.integer("integer"), least);
    EXPECT_EQ(kept.bytes("bytes"), (Bytes{0, 0xFF}));
    EXPECT_EQ(kept.string("κλειδί"), "");
    EXPECT_EQ(kept.integer("boolean"), std::nullopt);
    EXPECT_EQ(kept.boolean("integer"), std::nullopt);
    EXPECT_EQ(kept.bytes("string"), std::nullopt);
    EXPECT_EQ(kept.string("bytes"), std::nullopt);
    EXPECT_FALSE(kept.contains("absent"));
    EXPECT_TRUE(kept.couldBeRead());
    EXPECT_EQ(kept.persistenceError(), std::nullopt);
}

TYPED_TEST_P(PreferencesContract, TellsObserversOfEachChangeAndOfNothingElse) {
    auto& preferences = this->rig.preferences();
    int told = 0;
    const auto subscription = preferences.onChange([&] { ++told; });
    preferences.setInteger("days", 30);
    preferences.setInteger("days", 30);
    preferences.remove("months");
    preferences.flush();
    EXPECT_EQ(told, 1);
    preferences.setString("days", "many");
    EXPECT_EQ(preferences.integer("days"), std::nullopt);
    preferences.remove("days");
    EXPECT_EQ(told, 3);
    EXPECT_FALSE(preferences.contains("days"));
}

REGISTER_TYPED_TEST_SUITE_P(PreferencesContract, KeepsEachTypeExactlyAndReadsAnotherAsAbsent,
                            TellsObserversOfEachChangeAndOfNothingElse);

}  // namespace quorvi::test
