#pragma once

#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/locale/Calendar.h"

namespace quorvi {

// The calendar of the user, which may change while the program runs (travel). Looking up the time
// zone reads files, so get() returns the last result and refreshes it in the background when it is
// old. Main thread; executor and scheduler outlive it.
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
