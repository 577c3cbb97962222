#pragma once

#include <functional>
#include <memory>
#include <stop_token>
#include <string>

#include "Quorvi/platform/KeyStore.h"
#include "Quorvi/platform/Keychain.h"
#include "Quorvi/platform/Preferences.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Future.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

// The item of the API key, and of the key of another speech service; without an address, of all.
KeychainQuery mainKeyQuery();
KeychainQuery otherKeyQuery(std::string address);

// Keeps the user's API key in the system's keychain: as an item of this machine and, if the user
// chose so ("syncAPIKey"), as a synchronised copy, which then takes precedence. Main thread; each
// operation is one job on the executor, and changes run one after another. hasKey() is looked up at
// the start and whenever the keychain changes, never on demand. The destructor stops running
// operations; the executor and the keychain outlive the object.
class KeychainStore : public KeyStore {
public:
    // `otherService` is the address of another speech service, whose key it keeps instead.
    KeychainStore(Keychain& keychain, Preferences& preferences, Executor& executor,
                  Scheduler& scheduler, std::string otherService = {});
    ~KeychainStore() override;
    KeychainStore(const KeychainStore&) = delete;
    KeychainStore& operator=(const KeychainStore&) = delete;

    bool hasKey() override { return presence_ != KeychainStatus::itemNotFound; }
    bool isLocked() override { return presence_ == KeychainStatus::interactionNotAllowed; }
    Task<void> unlock(std::stop_token stop) override;
    Task<std::string> read(std::stop_token stop) override;
    Task<void> save(std::string key) override;
    Task<void> remove() override;
    Task<bool> syncEnabled() override;
    Task<void> setSyncEnabled(bool on) override;
    Task<bool> refresh() override;
    [[nodiscard]] Subscription onChange(std::function<void()> observer) override {
        return changes_.subscribe(std::move(observer));
    }

private:
    struct Turn;

    bool syncIsChosen() const;
    void look();
    Task<void> keepLooking();
    void setPresence(KeychainStatus presence);

    const KeychainQuery name_;
    Keychain& keychain_;
    Preferences& preferences_;
    Executor& executor_;
    Scheduler& scheduler_;
    std::stop_source ending_;
    Observable changes_;
    // success, itemNotFound, or interactionNotAllowed: locked
    KeychainStatus presence_ = KeychainStatus::itemNotFound;
    bool looking_ = false;
    bool lookAgain_ = false;
    Promise<void> lastTurn_;
    Subscription keychainChanges_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
