#pragma once

#include <functional>
#include <stop_token>
#include <string>

#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Task.h"

namespace quorvi {

// Where the user's API key lives. Main thread; nothing blocks. The key never reaches a file, a log
// or an argument list.
class KeyStore {
public:
    virtual ~KeyStore() = default;

    // Whether a key is stored, as last known: costs nothing and never prompts the user.
    virtual bool hasKey() = 0;
    // Looks afresh; yields what hasKey() says from then on.
    virtual Task<bool> refresh() = 0;

    // Each throws QuorviError with the sentence to show.
    virtual Task<std::string> read(std::stop_token stop) = 0;
    virtual Task<void> save(std::string key) = 0;
    virtual Task<void> remove() = 0;

    // Whether the key is kept as a copy too that travels to the user's other machines.
    virtual Task<bool> syncEnabled() = 0;
    virtual Task<void> setSyncEnabled(bool on) = 0;

    // Told when hasKey() has changed, here or in another program.
    [[nodiscard]] virtual Subscription onChange(std::function<void()> observer) = 0;
};

}  // namespace quorvi
