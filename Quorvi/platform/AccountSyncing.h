#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

// Exchanges the user's data with their other machines, as the interface and the controller see it.
// Main thread.
class AccountSyncing {
public:
    virtual ~AccountSyncing() = default;

    // Told after any change of the state below; observers re-read it.
    [[nodiscard]] virtual Subscription onChange(std::function<void()> observer) = 0;

    // The user's switch.
    virtual bool enabled() const = 0;
    virtual void setEnabled(bool enabled) = 0;
    // One sentence about what is going on.
    virtual const std::string& status() const = 0;
    // Number of values that wait to be sent.
    virtual std::size_t pendingCount() const = 0;
    // The last time that nothing was left to send.
    virtual std::optional<Date> lastSynced() const = 0;
    // A pass is under way.
    virtual bool working() const = 0;

    // Starts a pass unless one is under way or the cloud wants to be left alone.
    virtual void syncNow() = 0;
    // Takes in what has changed last, before the program quits.
    virtual void shutdown() = 0;
};

// A program without synchronisation: everything stays on this machine.
class NoAccountSync final : public AccountSyncing {
public:
    Subscription onChange(std::function<void()>) override { return {}; }
    bool enabled() const override { return false; }
    void setEnabled(bool) override {}
    const std::string& status() const override { return status_; }
    std::size_t pendingCount() const override { return 0; }
    std::optional<Date> lastSynced() const override { return std::nullopt; }
    bool working() const override { return false; }
    void syncNow() override {}
    void shutdown() override {}

private:
    std::string status_ = "Sync paused on this Mac";
};

}  // namespace quorvi
