#include "Quorvi/system/MemoryKeyStore.h"

#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/base/Wipe.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

MemoryKeyStore::~MemoryKeyStore() {
    wipe(key_);
}

Task<std::string> MemoryKeyStore::read(std::stop_token stop) {
    throwIfStopped(stop);
    if (key_.empty()) throw QuorviError::message(say::apiKeyUnavailable());
    co_return key_;
}

Task<void> MemoryKeyStore::save(std::string key) {
    const auto trimmed = text::trimmed(key);
    const bool valid = !trimmed.empty() && !text::containsWhiteSpace(trimmed);
    if (valid) {
        wipe(key_);
        key_ = trimmed;
    }
    wipe(key);
    if (!valid) throw QuorviError::message(say::apiKeyInvalid());
    changes_.notify();
    co_return;
}

Task<void> MemoryKeyStore::remove() {
    wipe(key_);
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
