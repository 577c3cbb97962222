#pragma once

#include <sys/types.h>
#include <span>
#include <stop_token>

#include "Quorvi/platform/KeyEventTap.h"
#include "QuorviCore/async/Task.h"

namespace quorvi {

// Synthesises keyboard events for the frontmost application. Main thread; nothing blocks or throws.
class KeyEventPoster {
public:
    virtual ~KeyEventPoster() = default;

    // Returns whether events can be posted now.
    virtual bool isAvailable() const = 0;

    // Gets ready to post within the next seconds, where that takes a while. isAvailable() then says
    // whether it has succeeded.
    virtual Task<void> prepare(std::stop_token) { co_return; }

    // Returns whether the active application, `pid`, first looks at a new clipboard, and pastes
    // nothing or the former content until then. False if that is unknown.
    virtual Task<bool> looksBeforePasting(pid_t pid, std::stop_token stop) = 0;

    // Posts the events in order, without delay and without user input in between. Command-V is
    // translated into the paste chord of the application `pid`, on the key that pastes under the
    // current layout. The tap receives every event with its sourceUserData. Returns at once; the
    // events follow within a millisecond.
    virtual void post(std::span<const TapEvent> events, pid_t pid) = 0;
};

}  // namespace quorvi
