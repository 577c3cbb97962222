#pragma once

#include <string>

#include "Quorvi/platform/KeyStore.h"

namespace quorvi {

// Keeps the API key in this process's memory only, overwritten as soon as it is no longer wanted.
// Main thread; the key is gone with the object.
class MemoryKeyStore : public KeyStore {
public:
    MemoryKeyStore() = default;
    MemoryKeyStore(const MemoryKeyStore&) = delete;
    MemoryKeyStore& operator=(const MemoryKeyStore&) = delete;
    ~MemoryKeyStore() override;

    bool hasKey() override { return !key_.empty(); }

    Task<std::string> read(std::stop_token stop) override;
    // White space at both ends is dropped; what is left must be one word.
    Task<void> save(std::string key) override;
    Task<void> remove() override;

private:
    std::string key_;
};

}  // namespace quorvi
