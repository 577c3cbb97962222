#pragma once

#include <functional>

#include "Quorvi/platform/ClockChanges.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/locale/Calendar.h"

namespace quorvi {

// The user's calendar, whose time zone may change while the program runs (travel), and the present
// day in it. Nothing of it is loaded, and no midnight waited for, before somebody needs it. Looking
// up the time zone reads files, so a change is looked up on the executor. Main thread; what it is
// given outlives it.
class SystemCalendar {
public:
    SystemCalendar(ClockChanges& changes, Executor& executor, Scheduler& scheduler,
                   std::function<Calendar()> lookUp = Calendar::system);

    const Calendar& get() const { return calendar_; }

    // Observers are called when a day begins, and when the zone or the clock has changed: what they
    // show or have calculated for the present day may be out of date.
    [[nodiscard]] Subscription onNewDay(std::function<void()> observer) {
        waitForMidnight();
        return newDays_.subscribe(std::move(observer));
    }

private:
    void lookUpAgain();
    void announceDay();
    void waitForMidnight();

    Executor& executor_;
    Scheduler& scheduler_;
    const std::function<Calendar()> lookUp_;
    Calendar calendar_;
    Observable newDays_;
    Timer midnight_;
    Subscription changes_;
    Lifetime lifetime_;
};

}  // namespace quorvi
