#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "Quorvi/system/MemoryKeyStore.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "QuorviCore/async/TaskScope.h"
#include "tests/fakes/VirtualScheduler.h"

namespace quorvi {
namespace {

Task<void> saveKey(KeyStore& store, std::string key, std::string& outcome) {
    try {
        auto saving = store.save(std::move(key));
        co_await saving;
        auto reading = store.read({});
        outcome = co_await reading;
    } catch (const std::exception& error) {
        outcome = error.what();
    }
}

Task<void> removeAndRead(KeyStore& store, std::string& outcome) {
    auto removing = store.remove();
    co_await removing;
    try {
        auto reading = store.read({});
        outcome = co_await reading;
    } catch (const std::exception& error) {
        outcome = error.what();
    }
}

struct MemoryKeyStoreTest : testing::Test {
    std::string save(std::string key) {
        std::string outcome;
        scope.start([&](std::stop_token) { return saveKey(store, std::move(key), outcome); });
        scheduler.settle();
        return outcome;
    }

    VirtualScheduler scheduler;
    MemoryKeyStore store;
    TaskScope scope{scheduler};
};

TEST_F(MemoryKeyStoreTest, AKeyIsKeptWithoutTheWhiteSpaceAroundIt) {
    EXPECT_EQ(save("  sk-1234\n"), "sk-1234");
    EXPECT_TRUE(store.hasKey());
}

TEST_F(MemoryKeyStoreTest, ARefusedKeyLeavesTheStoredOne) {
    save("sk-1234");
    for (const auto* bad : {"", " \n", "two words", "line\nbreak", "no\u00A0break"})
        EXPECT_EQ(save(bad), "Enter a valid API key without spaces.") << '"' << bad << '"';
    EXPECT_EQ(save("sk-1234"), "sk-1234");
}

TEST_F(MemoryKeyStoreTest, ReadingWithoutAKeySaysWhatToDo) {
    save("sk-1234");
    std::string outcome;
    scope.start([&](std::stop_token) { return removeAndRead(store, outcome); });
    scheduler.settle();
    EXPECT_EQ(outcome, "Your API key is unavailable. Add it again in Settings.");
    EXPECT_FALSE(store.hasKey());
}

TEST(MemoryPreferences, AValueOfAnotherTypeReadsAsAbsent) {
    MemoryPreferences preferences;
    preferences.setInteger("days", 30);
    EXPECT_EQ(preferences.integer("days"), 30);
    EXPECT_EQ(preferences.boolean("days"), std::nullopt);
    EXPECT_EQ(preferences.string("days"), std::nullopt);
    EXPECT_TRUE(preferences.contains("days"));
    preferences.setString("days", "many");
    EXPECT_EQ(preferences.integer("days"), std::nullopt);
}

TEST(MemoryPreferences, ObserversHearOfEachChangeAndOfNothingElse) {
    MemoryPreferences preferences;
    int told = 0;
    auto subscription = preferences.onChange([&] { ++told; });
    preferences.setBoolean("on", true);
    preferences.setBoolean("on", true);
    preferences.remove("off");
    EXPECT_EQ(told, 1);
    preferences.setBytes("on", {1, 2});
    preferences.remove("on");
    EXPECT_EQ(told, 3);
    EXPECT_FALSE(preferences.contains("on"));
}

}  // namespace
}  // namespace quorvi
