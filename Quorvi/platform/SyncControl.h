#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// Synchronisation of the user's data with their other machines, as the interface and the
// application model control it. Main thread.
class SyncControl {
public:
    virtual ~SyncControl() = default;

    // Observers are called after any change of the state below, and read it again.
    [[nodiscard]] virtual Subscription onChange(std::function<void()> observer) = 0;

    // The user's switch.
    virtual bool enabled() const = 0;
    virtual void setEnabled(bool enabled) = 0;
    // One sentence about what is going on.
    virtual const Message& status() const = 0;
    // Number of values that are still to be sent.
    virtual std::size_t pendingCount() const = 0;
    // When a pass last ended with nothing left to send; nullopt before the first one.
    virtual std::optional<Date> lastSynced() const = 0;
    // Whether a pass is under way.
    virtual bool working() const = 0;

    // Starts a pass, or another one after the pass under way. Does nothing while the cloud has
    // asked for a pause.
    virtual void syncNow() = 0;
    // Records the last local changes and ends synchronisation, before the program quits.
    virtual void shutdown() = 0;
};

// The control of a program without synchronisation: everything stays on this machine.
class SyncDisabled final : public SyncControl {
public:
    Subscription onChange(std::function<void()>) override { return {}; }
    bool enabled() const override { return false; }
    void setEnabled(bool) override {}
    const Message& status() const override { return status_; }
    std::size_t pendingCount() const override { return 0; }
    std::optional<Date> lastSynced() const override { return std::nullopt; }
    bool working() const override { return false; }
    void syncNow() override {}
    void shutdown() override {}

private:
    Message status_ = say::syncOff();
};

}  // namespace quorvi
