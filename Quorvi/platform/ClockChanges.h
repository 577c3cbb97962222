#pragma once

#include <functional>

#include "QuorviCore/async/Observable.h"

namespace quorvi {

// Changes of the date and of the time zone that no timer notices, because timers don't follow the
// clock on the wall. Main thread.
class ClockChanges {
public:
    virtual ~ClockChanges() = default;

    // Observers are called when the clock was set, the time zone may have changed, or the machine
    // has woken.
    [[nodiscard]] virtual Subscription onChange(std::function<void()> observer) = 0;
};

}  // namespace quorvi
