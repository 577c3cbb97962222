#pragma once

#include <functional>
#include <string>
#include <utility>

#include "Quorvi/platform/KeyStore.h"

namespace quorvi {

// Keeps the API key in this process's memory only and wipes it when it is replaced, removed or the
// object is destroyed. Main thread.
class MemoryKeyStore : public KeyStore {
public:
    bool hasKey() override { return !key_.view().empty(); }
    Task<bool> refresh() override { co_return hasKey(); }

    Task<std::string> read(std::stop_token stop) override;
    Task<void> save(std::string key) override;
    Task<void> remove() override;
    // Always false: this key never leaves the process.
    Task<bool> syncEnabled() override;
    Task<void> setSyncEnabled(bool on) override;
    [[nodiscard]] Subscription onChange(std::function<void()> observer) override {
        return changes_.subscribe(std::move(observer));
    }

private:
    Secret key_;
    Observable changes_;
};

}  // namespace quorvi
