#include <gtest/gtest.h>

#include "Quorvi/system/MemoryKeyStore.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "QuorviCore/messages/Message.h"
#include "tests/support/Waiting.h"
#include "tests/support/contracts/PreferencesContract.h"

namespace quorvi::test {
namespace {

// The stored key after the operation, or why there is none.
std::string keyAfter(MemoryKeyStore& store, Task<void> operation) {
    const Running<void> changing(std::move(operation));
    if (!changing.value()) return changing.failure();
    const Running<std::string> reading(store.read({}));
    return reading.value().value_or(reading.failure());
}

TEST(MemoryKeyStore, KeepsAKeyWithoutTheWhiteSpaceAroundItAndRefusesAnyInside) {
    MemoryKeyStore store;
    EXPECT_EQ(keyAfter(store, store.save("  sk-1234\n")), "sk-1234");
    for (const auto* bad : {"", " \n", "two words", "line\nbreak", "no\u00A0break"})
        EXPECT_EQ(keyAfter(store, store.save(bad)), say::apiKeyInvalid().english()) << bad;
    EXPECT_TRUE(store.hasKey());
    EXPECT_EQ(keyAfter(store, store.remove()), say::apiKeyUnavailable().english());
    EXPECT_FALSE(store.hasKey());
}

class MemoryRig {
public:
    Preferences& preferences() { return preferences_; }
    void reopen() {}

private:
    MemoryPreferences preferences_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(InMemory, PreferencesContract, MemoryRig);

}  // namespace quorvi::test
