// The key store against GNOME's keyring, with a user who answers its questions at the keyboard.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/system/KeychainStore.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/messages/Message.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/Keyring.h"

namespace quorvi::test {
namespace {

const auto unavailable = say::apiKeyUnavailable().english();

const KeychainQuery local{"app.quorvi.Quorvi.openai", "api-key", false};
const KeychainQuery synchronized{"app.quorvi.Quorvi.openai", "api-key", true};

// One running program's share of the key store.
struct Program {
    explicit Program(LoopScheduler& scheduler) : loop(scheduler), keychain(scheduler) {}

    template <class T>
    std::string outcome(Task<T> task) {
        const Running<T> running(std::move(task));
        EXPECT_TRUE(await(loop, running));
        if (!running.value()) return running.failure();
        if constexpr (std::is_same_v<T, std::string>) return *running.value();
        return "done";
    }
    std::string read() { return outcome(store->read({})); }
    std::string save(const std::string& key) { return outcome(store->save(key)); }
    std::string setSync(bool on) { return outcome(store->setSyncEnabled(on)); }
    std::string remove() { return outcome(store->remove()); }
    bool comesToHaveKey(bool has) {
        return until(loop, [&] { return store->hasKey() == has && !store->isLocked(); });
    }
    // An item's key, or the status.
    std::string item(const KeychainQuery& query) {
        auto reading = inBackground(executor, loop, [&] { return keychain.read(query, {}); });
        const Running<KeychainItem> running(std::move(reading));
        EXPECT_TRUE(await(loop, running));
        const auto& item = *running.value();
        return item.status == KeychainStatus::success
                   ? std::string(item.secret.view())
                   : std::to_string(static_cast<int>(item.status));
    }
    // Every operation reports the status.
    void expectFailures(int status, bool sync) {
        EXPECT_EQ(read(), unavailable);
        EXPECT_EQ(save("sk-other"), say::apiKeyNotSaved(status).english());
        EXPECT_EQ(setSync(sync), say::apiKeyCopyNotUpdated(status).english());
        EXPECT_EQ(remove(), say::apiKeyCopyNotRemoved(status).english());
    }
    KeychainStatus exists(const KeychainQuery& query) {
        const Running<KeychainStatus> running(
            inBackground(executor, loop, [&] { return keychain.exists(query, {}); }));
        EXPECT_TRUE(await(loop, running));
        return *running.value();
    }

    LoopScheduler& loop;
    SecretServiceKeychain keychain;
    SerialExecutor executor{"secrets"};
    MemoryPreferences preferences;
    std::unique_ptr<KeychainStore> store =
        std::make_unique<KeychainStore>(keychain, preferences, executor, loop);
};

struct SecretServiceKeychainTest : testing::Test {
    Keyring keyring;
    LoopScheduler loop;
    Program program{loop};
};

TEST_F(SecretServiceKeychainTest, EveryProgramSeesWhatAnyOfThemSavedOrRemoved) {
    Program other(loop);
    EXPECT_EQ(program.read(), unavailable);
    EXPECT_EQ(program.remove(), "done");
    EXPECT_EQ(program.save(" sk-first\n"), "done");
    EXPECT_TRUE(program.store->hasKey());
    EXPECT_TRUE(other.comesToHaveKey(true));
    EXPECT_EQ(other.read(), "sk-first");
    EXPECT_EQ(other.save("sk-second"), "done");
    EXPECT_EQ(program.read(), "sk-second");
    EXPECT_EQ(program.item(synchronized), "-25300");
    EXPECT_EQ(program.remove(), "done");
    EXPECT_TRUE(other.comesToHaveKey(false));
    EXPECT_EQ(other.read(), unavailable);
}

TEST_F(SecretServiceKeychainTest, EachServiceHasAKeyOfItsOwnAndAllCanBeRemoved) {
    EXPECT_EQ(program.save("sk-main"), "done");
    std::map<std::string, std::unique_ptr<KeychainStore>> others;
    for (const std::string address : {"https://one.example", "https://two.example"}) {
        auto& store = others[address] = std::make_unique<KeychainStore>(
            program.keychain, program.preferences, program.executor, loop, address);
        EXPECT_EQ(program.outcome(store->save("sk-" + address)), "done");
    }
    for (const auto& [address, store] : others)
        EXPECT_EQ(program.item(otherKeyQuery(address)), "sk-" + address);
    const Running<KeychainStatus> removing(inBackground(
        program.executor, loop, [&] { return program.keychain.remove(otherKeyQuery({}), {}); }));
    EXPECT_TRUE(await(loop, removing));
    for (const auto& [address, store] : others)
        EXPECT_EQ(program.item(otherKeyQuery(address)), "-25300");
    EXPECT_EQ(program.read(), "sk-main");
}

TEST_F(SecretServiceKeychainTest, OnlyAReadAsksTheUserToUnlock) {
    keyring.allowPrompter();
    EXPECT_EQ(program.save("sk-key"), "done");
    keyring.lock();
    EXPECT_TRUE(until(loop, [&] { return program.store->isLocked(); }));
    EXPECT_EQ(program.exists(local), KeychainStatus::interactionNotAllowed);
    EXPECT_FALSE(Keyring::isAsking());

    const Running<std::string> dismissed(program.store->read({}));
    Keyring::dismiss();
    EXPECT_TRUE(await(loop, dismissed));
    EXPECT_EQ(dismissed.failure(), unavailable);
    EXPECT_TRUE(program.store->isLocked());

    const Running<std::string> answered(program.store->read({}));
    Keyring::answer(Keyring::password);
    EXPECT_TRUE(await(loop, answered));
    EXPECT_EQ(answered.value(), "sk-key");
    EXPECT_TRUE(program.comesToHaveKey(true));
}

TEST_F(SecretServiceKeychainTest, AKeyringThatStaysLockedLosesNothing) {
    EXPECT_EQ(program.save("sk-local"), "done");
    EXPECT_EQ(program.setSync(true), "done");
    EXPECT_EQ(program.save("sk-synchronised"), "done");
    // A service that was never unlocked doesn't know what is in the collection.
    keyring.kill();
    keyring.start(Keyring::Begin::locked);
    EXPECT_EQ(program.exists(synchronized), KeychainStatus::interactionNotAllowed);
    program.expectFailures(-128, false);
    EXPECT_EQ(program.preferences.boolean("syncAPIKey"), true);

    keyring.allowPrompter();
    const Running<void> changing(program.store->setSyncEnabled(false));
    Keyring::answer(Keyring::password);
    EXPECT_TRUE(await(loop, changing));
    EXPECT_EQ(changing.failure(), "");
    EXPECT_EQ(program.item(local), "sk-synchronised");
}

TEST_F(SecretServiceKeychainTest, AStopEndsTheWaitForTheUserOrAHungService) {
    keyring.allowPrompter();
    EXPECT_EQ(program.save("sk-key"), "done");
    keyring.lock();
    std::stop_source stop;
    const Running<std::string> reading(program.store->read(stop.get_token()));
    EXPECT_TRUE(eventually(&Keyring::isAsking));
    stop.request_stop();
    EXPECT_TRUE(await(loop, reading));
    EXPECT_TRUE(reading.cancelled());
    // The question is still there, and answering it is still good for something.
    Keyring::answer(Keyring::password);
    EXPECT_TRUE(program.comesToHaveKey(true));
    EXPECT_EQ(program.read(), "sk-key");

    keyring.freeze();
    std::stop_source stopHung;
    const Running<std::string> hung(program.store->read(stopHung.get_token()));
    stopHung.request_stop();
    EXPECT_TRUE(await(loop, hung));
    EXPECT_TRUE(hung.cancelled());
    {
        const Running<void> saving(program.store->save("sk-other"));
        program.store.reset();  // quitting doesn't wait either
    }
}

TEST_F(SecretServiceKeychainTest, FollowsAServiceThatEndsAndBeginsAnew) {
    keyring.allowPrompter();
    EXPECT_EQ(program.save("sk-key"), "done");
    keyring.lock();
    const Running<std::string> reading(program.store->read({}));
    EXPECT_TRUE(eventually(&Keyring::isAsking));
    keyring.kill();
    EXPECT_TRUE(await(loop, reading));
    EXPECT_EQ(reading.failure(), unavailable);
    EXPECT_TRUE(program.comesToHaveKey(false));

    program.expectFailures(-25291, true);

    keyring.start();
    EXPECT_TRUE(program.comesToHaveKey(true));
    EXPECT_EQ(program.read(), "sk-key");
    EXPECT_EQ(program.save("sk-other"), "done");
    EXPECT_EQ(program.read(), "sk-other");
}

}  // namespace
}  // namespace quorvi::test
