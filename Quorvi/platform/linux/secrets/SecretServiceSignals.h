#pragma once

#include <functional>
#include <memory>

namespace quorvi {

// Hears from the Secret Service that something in it has changed: items and collections that come,
// go, change, are locked or unlocked, and the service itself starting and ending. Each burst is
// many calls. A thread of its own runs from construction to destruction, which waits for it.
class SecretServiceSignals {
public:
    // `onSignal` is called on that thread, for the first time when nothing is missed any more.
    explicit SecretServiceSignals(std::function<void()> onSignal);
    ~SecretServiceSignals();

private:
    struct Watch;
    std::unique_ptr<Watch> watch_;
};

}  // namespace quorvi
