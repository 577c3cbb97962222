#pragma once

#include <functional>
#include <memory>

namespace quorvi {

// Calls back when something in the Secret Service changes: items and collections that appear,
// vanish, change, are locked or unlocked, and the service's start and end. One change brings many
// calls. A thread of its own runs from construction to destruction, which waits for it.
class SecretServiceSignals {
public:
    // `onSignal` is called on that thread; the first time as soon as it is subscribed.
    explicit SecretServiceSignals(std::function<void()> onSignal);
    ~SecretServiceSignals();

private:
    struct Watch;
    std::unique_ptr<Watch> watch_;
};

}  // namespace quorvi
