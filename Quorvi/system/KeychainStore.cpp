#include "Quorvi/system/KeychainStore.h"

#include <utility>

#include "Quorvi/settings/Settings.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/identity/BundleIdentifier.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

using Status = KeychainStatus;

template <Sentence id>
QuorviError failure(const SentenceMaker<id>& sentence, Status status) {
    return QuorviError::message(sentence(static_cast<std::int32_t>(status)));
}

bool isGone(Status status) {
    return status == Status::success || status == Status::itemNotFound;
}

// The operations on the two items, on the executor.
class Items {
public:
    Items(Keychain& keychain, const KeychainQuery& name, std::stop_token stop)
        : keychain_(keychain), stop_(std::move(stop)), local(name), synchronized(name) {
        synchronized.synchronizable = true;
    }

    // success, itemNotFound, or interactionNotAllowed: locked.
    Status presence() const {
        bool isLocked = false;
        for (const auto& query : {synchronized, local}) {
            const auto status = keychain_.exists(query, stop_);
            if (status == Status::success) return status;
            isLocked = isLocked || status == Status::interactionNotAllowed;
        }
        return isLocked ? Status::interactionNotAllowed : Status::itemNotFound;
    }

    void unlock() const {
        for (const auto& query : {synchronized, local})
            if (lookUnlocking(query) != Status::itemNotFound) return;
    }

    bool syncEnabled(bool chosen) const {
        return chosen || keychain_.exists(synchronized, stop_) == Status::success;
    }

    // The synchronised item if there is one: the local one may then be an older key. So a locked
    // keychain, which hides whether there is one, is unlocked first.
    KeychainItem read() const {
        const auto there = keychain_.exists(synchronized, stop_);
        if (there == Status::success || there == Status::interactionNotAllowed) {
            auto item = keychain_.read(synchronized, stop_);
            if (item.status != Status::itemNotFound) return item;
        }
        return keychain_.read(local, stop_);
    }

    void save(const Secret& key, bool syncChosen) const {
        bool synchronizing = syncChosen;
        if (!synchronizing) {
            const auto there = lookUnlocking(synchronized);
            if (there == Status::userCanceled) throw saveFailure(there);
            synchronizing = there == Status::success;
        }
        write(key, synchronizing);
    }

    void remove() const {
        if (const auto status = keychain_.remove(synchronized, stop_); !isGone(status))
            throw failure(say::apiKeyCopyNotRemoved, status);
        if (const auto status = keychain_.remove(local, stop_); !isGone(status))
            throw failure(say::apiKeyNotRemoved, status);
    }

    void setSyncEnabled(bool on) const {
        if (hasKeyUnlocking()) {
            const auto item = read();
            if (item.status != Status::success || !text::isValidUtf8(item.secret.view()))
                throw QuorviError::message(say::apiKeyUnavailable());
            write(item.secret, on);
        }
        if (on) return;
        if (const auto status = keychain_.remove(synchronized, stop_); !isGone(status))
            throw syncFailure(status);
    }

private:
    // Whether the item is there; asks the user to unlock a locked keychain.
    Status lookUnlocking(const KeychainQuery& query) const {
        const auto status = keychain_.exists(query, stop_);
        return status == Status::interactionNotAllowed ? keychain_.read(query, stop_).status
                                                       : status;
    }

    // Throws if the keychain stays locked or doesn't answer: it may hold the only key, and taking
    // that for "no key" would delete it.
    bool hasKeyUnlocking() const {
        for (const auto& query : {synchronized, local}) {
            const auto status = lookUnlocking(query);
            if (status == Status::success) return true;
            if (status != Status::itemNotFound) throw syncFailure(status);
        }
        return false;
    }

    void write(const Secret& key, bool synchronizing) const {
        const auto& query = synchronizing ? synchronized : local;
        auto status = keychain_.update(query, key, stop_);
        if (status == Status::itemNotFound)
            status =
                keychain_.add(query, key,
                              synchronizing ? KeychainAccessibility::whenUnlocked
                                            : KeychainAccessibility::whenUnlockedThisDeviceOnly,
                              stop_);
        if (status != Status::success) throw saveFailure(status);
    }

    static QuorviError saveFailure(Status status) { return failure(say::apiKeyNotSaved, status); }
    static QuorviError syncFailure(Status status) {
        return failure(say::apiKeyCopyNotUpdated, status);
    }

    Keychain& keychain_;
    std::stop_token stop_;
    KeychainQuery local;
    KeychainQuery synchronized;
};

}  // namespace

KeychainQuery mainKeyQuery() {
    return {std::string(bundleIdentifier) + ".openai", "api-key"};
}

KeychainQuery otherKeyQuery(std::string address) {
    return {std::string(bundleIdentifier) + ".speech-service", std::move(address)};
}

// Serialises the operations that change something, each from reading the preference to changing
// it.
struct KeychainStore::Turn {
    Turn(Promise<void>& last, Scheduler& scheduler)
        : done(scheduler), before(std::exchange(last, done).future()) {}
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn() { done.resolve(); }

    Promise<void> done;
    Future<void> before;
};

KeychainStore::KeychainStore(Keychain& keychain, Preferences& preferences, Executor& executor,
                             Scheduler& scheduler, std::string otherService)
    : name_(otherService.empty() ? mainKeyQuery() : otherKeyQuery(std::move(otherService))),
      keychain_(keychain),
      preferences_(preferences),
      executor_(executor),
      scheduler_(scheduler),
      lastTurn_(scheduler),
      keychainChanges_(keychain.onChange([this] { look(); })),
      tasks_(scheduler) {
    lastTurn_.resolve();
    look();
}

KeychainStore::~KeychainStore() {
    ending_.request_stop();
}

bool KeychainStore::syncIsChosen() const {
    return name_ == mainKeyQuery() && Settings(preferences_).get(setting::syncAPIKey);
}

void KeychainStore::setPresence(KeychainStatus presence) {
    if (std::exchange(presence_, presence) != presence) changes_.notify();
}

Task<bool> KeychainStore::refresh() {
    auto looking = inBackground(executor_, scheduler_,
                                [&keychain = keychain_, name = name_, stop = ending_.get_token()] {
                                    return Items(keychain, name, stop).presence();
                                });
    const auto presence = co_await looking;
    setPresence(presence);
    co_return hasKey();
}

Task<void> KeychainStore::unlock(std::stop_token stop) {
    auto asking = inBackground(
        executor_, scheduler_,
        [&keychain = keychain_, name = name_, stop] { Items(keychain, name, stop).unlock(); },
        stop);
    co_await asking;
    auto looking = refresh();
    co_await looking;
    if (isLocked()) throw QuorviError::message(say::keyringStayedLocked());
}

// A change brings several signals; those that arrive during a look cause one more.
void KeychainStore::look() {
    lookAgain_ = true;
    if (std::exchange(looking_, true)) return;
    tasks_.start([this](std::stop_token) { return keepLooking(); });
}

Task<void> KeychainStore::keepLooking() {
    while (std::exchange(lookAgain_, false)) {
        auto looking = refresh();
        co_await looking;
    }
    looking_ = false;
}

Task<std::string> KeychainStore::read(std::stop_token stop) {
    std::stop_source reading;
    const auto end = [&reading] { reading.request_stop(); };
    const std::stop_callback onStop(stop, end);
    const std::stop_callback onEnding(ending_.get_token(), end);
    auto looking = inBackground(
        executor_, scheduler_,
        [&keychain = keychain_, name = name_, token = reading.get_token()] {
            return Items(keychain, name, token).read();
        },
        stop);
    const auto item = co_await looking;
    if (item.status != Status::success || !text::isValidUtf8(item.secret.view()))
        throw QuorviError::message(say::apiKeyUnavailable());
    co_return std::string(item.secret.view());
}

Task<void> KeychainStore::save(std::string key) {
    const auto secret = std::make_shared<const Secret>(validated(std::move(key)));
    Turn turn(lastTurn_, scheduler_);
    co_await turn.before;
    auto saving = inBackground(
        executor_, scheduler_,
        [&keychain = keychain_, name = name_, stop = ending_.get_token(), secret,
         chosen = syncIsChosen()] { Items(keychain, name, stop).save(*secret, chosen); });
    co_await saving;
    setPresence(Status::success);
}

Task<void> KeychainStore::remove() {
    Turn turn(lastTurn_, scheduler_);
    co_await turn.before;
    auto removing = inBackground(executor_, scheduler_,
                                 [&keychain = keychain_, name = name_, stop = ending_.get_token()] {
                                     Items(keychain, name, stop).remove();
                                 });
    co_await removing;
    setPresence(Status::itemNotFound);
}

Task<bool> KeychainStore::syncEnabled() {
    Turn turn(lastTurn_, scheduler_);
    co_await turn.before;
    auto looking = inBackground(
        executor_, scheduler_,
        [&keychain = keychain_, name = name_, stop = ending_.get_token(), chosen = syncIsChosen()] {
            return Items(keychain, name, stop).syncEnabled(chosen);
        });
    co_return co_await looking;
}

Task<void> KeychainStore::setSyncEnabled(bool on) {
    Turn turn(lastTurn_, scheduler_);
    co_await turn.before;
    auto changing = inBackground(executor_, scheduler_,
                                 [&keychain = keychain_, name = name_, stop = ending_.get_token(),
                                  on] { Items(keychain, name, stop).setSyncEnabled(on); });
    co_await changing;
    Settings(preferences_).set(setting::syncAPIKey, on);
}

}  // namespace quorvi
