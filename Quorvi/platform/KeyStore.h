#pragma once

#include <stop_token>
#include <string>

#include "QuorviCore/async/Task.h"

namespace quorvi {

// Where the user's API key lives. Main thread; nothing blocks. The key never reaches a file, a log
// or an argument list.
class KeyStore {
public:
    virtual ~KeyStore() = default;

    // Whether a key is stored, as last known; asks for a fresh look in the background. Never
    // prompts the user.
    virtual bool hasKey() = 0;

    // Each throws QuorviError with the sentence to show.
    virtual Task<std::string> read(std::stop_token stop) = 0;
    virtual Task<void> save(std::string key) = 0;
    virtual Task<void> remove() = 0;
};

}  // namespace quorvi
