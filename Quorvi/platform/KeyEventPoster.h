#pragma once

#include <sys/types.h>
#include <span>

#include "Quorvi/platform/KeyEventTap.h"

namespace quorvi {

// Synthesises keyboard events for the frontmost application. Main thread.
class KeyEventPoster {
public:
    virtual ~KeyEventPoster() = default;

    // Whether events can be created now.
    virtual bool isAvailable() const = 0;

    // Posts the events in order, without delay between them, nothing of the user's in between.
    // Command-V is translated into the desktop's own paste chord for the application `pid`, on the
    // key that pastes under the current layout. Every event carries its sourceUserData to the tap.
    // Returns at once; the events follow within a millisecond.
    virtual void post(std::span<const TapEvent> events, pid_t pid) = 0;
};

}  // namespace quorvi
