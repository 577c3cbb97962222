#pragma once

#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/locale/Calendar.h"

namespace quorvi {

// The user's calendar, which changes while the program runs: people travel. Finding the system's
// time zone reads files, so get() answers with what was found last and, when that is some time ago,
// has it looked up again in the background. Main thread; what it is given outlives it.
class SystemCalendar {
public:
    SystemCalendar(Executor& executor, Scheduler& scheduler);

    Calendar get();

private:
    void lookUp();

    Executor& executor_;
    Scheduler& scheduler_;
    Calendar calendar_ = Calendar::system();
    TimePoint lookedUp_;
    Lifetime lifetime_;
};

}  // namespace quorvi
