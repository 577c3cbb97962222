#include "Quorvi/system/MemoryKeyStore.h"

#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

Task<std::string> MemoryKeyStore::read(std::stop_token stop) {
    throwIfStopped(stop);
    if (!hasKey()) throw QuorviError::message(say::apiKeyUnavailable());
    co_return std::string(key_.view());
}

Task<void> MemoryKeyStore::save(std::string key) {
    key_ = validated(std::move(key));
    changes_.notify();
    co_return;
}

Task<void> MemoryKeyStore::remove() {
    key_ = Secret();
    changes_.notify();
    co_return;
}

Task<bool> MemoryKeyStore::syncEnabled() {
    co_return false;
}

Task<void> MemoryKeyStore::setSyncEnabled(bool on) {
    if (on) throw QuorviError::message(say::apiKeyInMemoryOnly());
    co_return;
}

}  // namespace quorvi
