#pragma once

#include <ctime>

#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Makes this process go on when it is stopped, as by Ctrl-Z in a terminal, while others wait for
// it: the kernel continues it when the limit is over. One thread at a time.
class StopLimit {
public:
    StopLimit();
    ~StopLimit();
    StopLimit(const StopLimit&) = delete;
    StopLimit& operator=(const StopLimit&) = delete;

    // From now on; to be renewed in time, which a stopped process does not. Continuing a process
    // that runs means nothing.
    void renew(Duration limit);
    // A stop is for as long as the user wants it.
    void cancel() { renew(Duration::zero()); }

private:
    timer_t timer_{};
    bool isThere_ = false;
};

}  // namespace quorvi
