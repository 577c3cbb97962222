#include "Quorvi/platform/linux/gio/SessionWatch.h"

#include <utility>

#include "Quorvi/platform/linux/gio/LogindSignals.h"
#include "Quorvi/platform/linux/gio/ScreenSaverSignals.h"

namespace quorvi {

SessionWatch::SessionWatch(Scheduler& scheduler, std::weak_ptr<SessionSignals> signals)
    : scheduler_(scheduler), signals_(std::move(signals)) {
    const auto locked = [this] { announce(&SessionSignals::screenLock); };
    systemBus_.emplace(BusClient::Bus::system, [this, locked](BusClient& bus) {
        watchSleep(bus, [this](bool sleeping) {
            announce(sleeping ? &SessionSignals::willSleep : &SessionSignals::didWake);
        });
        watchSessionLock(bus, locked);
    });
    sessionBus_.emplace(BusClient::Bus::session,
                        [locked](BusClient& bus) { watchScreenSavers(bus, locked); });
}

void SessionWatch::announce(Observable SessionSignals::* which) {
    scheduler_.post([weak = signals_, which] {
        if (const auto signals = weak.lock()) (*signals.*which).notify();
    });
}

}  // namespace quorvi
