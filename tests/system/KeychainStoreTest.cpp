#include "Quorvi/system/KeychainStore.h"

#include <gtest/gtest.h>

#include "Quorvi/system/MemoryPreferences.h"
#include "tests/dictation/DictationFixture.h"
#include "tests/fakes/FakeKeychain.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

using Items = std::map<bool, std::string>;
using Steps = std::vector<std::string>;
using Status = KeychainStatus;

struct KeychainStoreTest : testing::Test {
    KeychainStoreTest() { scheduler.settle(); }

    template <class T>
    std::string outcome(Task<T> task) {
        keychain.journal.clear();
        const Running<T> running(std::move(task));
        scheduler.settle();
        EXPECT_TRUE(running.ended());
        if (!running.value()) return running.failure();
        if constexpr (std::is_same_v<T, std::string>) return *running.value();
        return "done";
    }
    std::string setSync(bool on) { return outcome(store.setSyncEnabled(on)); }
    bool syncEnabled() {
        const Running<bool> running(store.syncEnabled());
        scheduler.settle();
        return running.value().value();
    }

    VirtualScheduler scheduler;
    TurnExecutor executor{scheduler};
    FakeKeychain keychain;
    MemoryPreferences preferences;
    KeychainStore store{keychain, preferences, executor, scheduler};
};

TEST_F(KeychainStoreTest, SavesToTheCopyThatCounts) {
    EXPECT_EQ(outcome(store.save(" sk-1\n")), "done");
    EXPECT_EQ(keychain.journal, (Steps{"exists sync", "update", "add"}));
    EXPECT_EQ(keychain.items, (Items{{false, "sk-1"}}));
    EXPECT_TRUE(keychain.staysHere[false]);
    EXPECT_TRUE(store.hasKey());
    EXPECT_FALSE(syncEnabled());

    EXPECT_EQ(setSync(true), "done");
    EXPECT_FALSE(keychain.staysHere[true]);
    EXPECT_TRUE(syncEnabled());
    EXPECT_EQ(outcome(store.save("sk-2")), "done");
    EXPECT_EQ(keychain.journal, (Steps{"update sync"}));
    EXPECT_EQ(keychain.items, (Items{{false, "sk-1"}, {true, "sk-2"}}));
    EXPECT_EQ(outcome(store.read({})), "sk-2");

    // Without the flag the copy itself says that the user chose it.
    preferences.remove("syncAPIKey");
    EXPECT_TRUE(syncEnabled());
    EXPECT_EQ(outcome(store.save("sk-3")), "done");
    EXPECT_EQ(keychain.items[true], "sk-3");
}

TEST_F(KeychainStoreTest, RefusesWhatIsNoKeyBeforeAskingTheKeychain) {
    for (const auto* bad : {"", " \n", "two words", "line\nbreak", "no\u00A0break"})
        EXPECT_EQ(outcome(store.save(bad)), say::apiKeyInvalid().english()) << bad;
    EXPECT_EQ(keychain.journal, Steps{});
    keychain.items[false] = "\xff\xfe";
    EXPECT_EQ(outcome(store.read({})), say::apiKeyUnavailable().english());
}

TEST_F(KeychainStoreTest, SwitchingTheCopyOffKeepsTheKeyBeforeItDeletesTheCopy) {
    keychain.items = {{false, "sk-old"}, {true, "sk-new"}};
    EXPECT_EQ(setSync(false), "done");
    EXPECT_EQ(keychain.journal,
              (Steps{"exists sync", "exists sync", "read sync", "update", "remove sync"}));
    EXPECT_EQ(keychain.items, (Items{{false, "sk-new"}}));
    EXPECT_FALSE(preferences.boolean("syncAPIKey").value_or(false));
}

TEST_F(KeychainStoreTest, NoFailureInTheMiddleLosesTheKeyOrChangesTheChoice) {
    struct Row {
        const char* step;
        Status status;
        std::string message;
        bool on = false;
    };
    for (const auto& row :
         {Row{"exists sync", Status::ioError, say::apiKeyCopyNotUpdated(-36).english()},
          Row{"read sync", Status::internalComponent, say::apiKeyUnavailable().english()},
          Row{"update", Status::interactionNotAllowed, say::apiKeyNotSaved(-25308).english()},
          Row{"add", Status::notAvailable, say::apiKeyNotSaved(-25291).english()},
          Row{"remove sync", Status::userCanceled, say::apiKeyCopyNotUpdated(-128).english()},
          Row{"update sync", Status::missingEntitlement, say::apiKeyNotSaved(-34018).english(),
              true}}) {
        keychain.items = {{true, "sk-key"}};
        preferences.setBoolean("syncAPIKey", !row.on);
        keychain.failures = {{row.step, row.status}};
        EXPECT_EQ(setSync(row.on), row.message) << row.step;
        EXPECT_EQ(keychain.items[true], "sk-key") << row.step;
        EXPECT_EQ(preferences.boolean("syncAPIKey"), !row.on) << row.step;
    }
}

TEST_F(KeychainStoreTest, RemovesBothItemsAndSaysWhichOneItCould) {
    EXPECT_EQ(outcome(store.remove()), "done") << "nothing there";
    keychain.items = {{false, "sk-1"}, {true, "sk-2"}};
    keychain.failures = {{"remove", Status::ioError}};
    EXPECT_EQ(outcome(store.remove()), say::apiKeyNotRemoved(-36).english());
    keychain.failures = {{"remove sync", Status::notAvailable}};
    EXPECT_EQ(outcome(store.remove()), say::apiKeyCopyNotRemoved(-25291).english());
    keychain.failures.clear();
    EXPECT_EQ(outcome(store.remove()), "done");
    EXPECT_EQ(keychain.items, Items{});
    EXPECT_FALSE(store.hasKey());
}

TEST_F(KeychainStoreTest, AskingForTheKeyCostsTheKeychainNothing) {
    int told = 0;
    const auto subscription = store.onChange([&] { ++told; });
    keychain.journal.clear();
    EXPECT_FALSE(store.hasKey());
    scheduler.settle();
    EXPECT_EQ(keychain.journal, Steps{});
    keychain.items[false] = "sk-other-program";
    for (int i = 0; i < 10; ++i) keychain.changes.notify();
    scheduler.settle();
    EXPECT_TRUE(store.hasKey());
    EXPECT_EQ(told, 1);
    EXPECT_EQ(keychain.journal.size(), 4u) << "a burst of signals is two looks";
}

TEST_F(KeychainStoreTest, ALockedKeychainCountsAsAKeyUntilItIsUnlocked) {
    const auto look = [this] { return outcome(store.refresh()); };
    keychain.locked = true;
    keychain.userUnlocks = false;
    look();
    EXPECT_TRUE(store.hasKey() && store.isLocked());
    EXPECT_EQ(outcome(store.unlock({})), say::keyringStayedLocked().english());
    keychain.userUnlocks = true;
    EXPECT_EQ(outcome(store.unlock({})), "done");
    EXPECT_FALSE(store.hasKey() || store.isLocked()) << "there was none";
    keychain.items = {{false, "sk-key"}};
    keychain.locked = true;
    EXPECT_EQ(outcome(store.unlock({})), "done");
    EXPECT_TRUE(store.hasKey() && !store.isLocked());
}

TEST_F(KeychainStoreTest, ConcurrentOperationsRunOneAfterAnother) {
    keychain.items = {{true, "sk-1"}};
    preferences.setBoolean("syncAPIKey", true);
    const Running<void> switching(store.setSyncEnabled(false));
    const Running<void> saving(store.save("sk-2"));
    scheduler.settle();
    EXPECT_TRUE(switching.value() && saving.value());
    EXPECT_EQ(keychain.items, (Items{{false, "sk-2"}})) << "the copy was made again";
}

TEST_F(DictationTest, ALockedKeyringIsUnlockedBeforeTheMicrophoneOpens) {
    keyStore.locked = true;
    for (const bool unlocks : {false, true}) {
        keyStore.userUnlocks = unlocks;
        dictate();
        expect(unlocks ? Stage::idle : Stage::failure,
               unlocks ? say::clickATextField() : say::keyringStayedLocked());
    }
    EXPECT_EQ(microphone.captures, 0);
    dictateToTheEnd();
    EXPECT_EQ(model->stage(), Stage::success);
}

TEST_F(DictationTest, ReportsWhetherTheKeyIsSynchronised) {
    const Running<bool> off(model->setKeySync(false));
    EXPECT_EQ(off.value(), true);
    EXPECT_EQ(model->keyMessage(), say::apiKeySyncDisabled());
    const Running<bool> on(model->setKeySync(true));
    EXPECT_EQ(on.value(), false);
    EXPECT_EQ(model->keyMessage().english(), say::apiKeyInMemoryOnly().english());
}

}  // namespace
}  // namespace quorvi::test
