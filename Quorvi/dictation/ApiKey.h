#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Quorvi/platform/KeyStore.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// The user's API key as the settings show it: whether there is one, and what the last operation on
// it said. Never holds the key. Main thread; owned by the controller, whose store outlives it.
class ApiKey {
public:
    explicit ApiKey(KeyStore& store) : store_(store), isThere_(store.hasKey()) {}

    bool isThere() const { return isThere_; }
    const Message& message() const { return message_; }

    // Called after a change of the above.
    std::function<void()> onChange;

    // Takes over what the store knows. Does not block.
    void refresh();

    // Each reports its outcome in message(); those with a result return whether they succeeded.
    Task<bool> save(std::string key);
    Task<void> remove();
    // Keeps a copy of the key for the user's other machines, or deletes that copy.
    Task<bool> setSync(bool on);

private:
    Task<bool> report(Task<void> operation, Message success, std::optional<bool> isThereAfterwards);
    void changed() {
        if (onChange) onChange();
    }

    KeyStore& store_;
    bool isThere_;
    Message message_;
};

}  // namespace quorvi
