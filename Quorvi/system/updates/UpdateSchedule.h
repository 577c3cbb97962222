#pragma once

#include <functional>

#include "Quorvi/platform/Preferences.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Schedules the daily check for updates. The preferences keep the date of the last one, so that it
// is daily however often the program starts. Main thread.
class UpdateSchedule {
public:
    // `look` is called when a check is due, and again an hour later until noteChecked() reports
    // success.
    UpdateSchedule(Scheduler& scheduler, Preferences& preferences, std::function<void()> look);

    void start();
    void stop() { timer_.cancel(); }
    void noteChecked();

private:
    bool isDue() const;

    Scheduler& scheduler_;
    Preferences& preferences_;
    std::function<void()> look_;
    Timer timer_;
};

}  // namespace quorvi
