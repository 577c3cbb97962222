#pragma once

#include <functional>

#include "Quorvi/platform/Preferences.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Says when the daily look for updates is due. The date of the last one is kept in the preferences,
// so that it is once a day however often the program is started. Main thread.
class UpdateSchedule {
public:
    // `look` is called when a look is due; noteChecked() tells that one has succeeded. One that has
    // not is due again an hour later.
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
