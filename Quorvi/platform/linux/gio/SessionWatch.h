#pragma once

#include <memory>
#include <optional>

#include "Quorvi/platform/linux/gio/BusClient.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// What concerns the whole session, whatever draws its windows. Main thread.
struct SessionSignals {
    Observable willSleep;
    Observable didWake;
    Observable screenLock;
};

// Hears of sleep, waking and locking from logind and the screen savers, and notifies on the main
// thread. Created and destroyed on a GLibThread; the scheduler outlives it.
class SessionWatch {
public:
    SessionWatch(Scheduler& scheduler, std::weak_ptr<SessionSignals> signals);

private:
    void announce(Observable SessionSignals::* which);

    Scheduler& scheduler_;
    const std::weak_ptr<SessionSignals> signals_;
    std::optional<BusClient> systemBus_, sessionBus_;
};

}  // namespace quorvi
