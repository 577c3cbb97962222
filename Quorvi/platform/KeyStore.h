#pragma once

#include <functional>
#include <stop_token>
#include <string>

#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Task.h"
#include "QuorviCore/base/Secret.h"

namespace quorvi {

// Storage of the user's API key. The key never reaches a file, a log or an argument list. Main
// thread; nothing blocks.
class KeyStore {
public:
    virtual ~KeyStore() = default;

    // Returns whether a key is stored, as last known; true while the storage is locked, which hides
    // it. Cheap; never prompts the user.
    virtual bool hasKey() = 0;
    // Whether the storage is locked, as last known. Cheap.
    virtual bool isLocked() { return false; }
    // Asks the user to unlock the storage. Throws QuorviError if it stays locked, Cancelled after a
    // stop.
    virtual Task<void> unlock(std::stop_token) { co_return; }
    // Queries the storage and returns the new hasKey().
    virtual Task<bool> refresh() = 0;

    // Each throws QuorviError with the sentence to show. They may prompt the user.
    virtual Task<std::string> read(std::stop_token stop) = 0;
    // Trims white space; the rest must be one word.
    virtual Task<void> save(std::string key) = 0;
    virtual Task<void> remove() = 0;

    // Whether there is also a copy of the key that is synchronised to the user's other machines.
    virtual Task<bool> syncEnabled() = 0;
    virtual Task<void> setSyncEnabled(bool on) = 0;

    // Observers are called when hasKey() or isLocked() has changed, also because of another
    // program.
    [[nodiscard]] virtual Subscription onChange(std::function<void()> observer) = 0;

protected:
    // Returns the key as save() stores it; throws if it is malformed.
    static Secret validated(std::string key);
};

}  // namespace quorvi
