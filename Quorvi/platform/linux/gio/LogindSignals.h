#pragma once

#include <functional>

#include "Quorvi/platform/linux/gio/BusClient.h"

namespace quorvi {

// What logind announces on the system bus. The callbacks are called as long as the client lives.

// `changed` is given true before the machine sleeps and false after it has woken.
void watchSleep(BusClient& systemBus, std::function<void(bool)> changed);

// `locked` is called when the session of this user is to be locked, or when its screen locker
// says that it is.
void watchSessionLock(BusClient& systemBus, std::function<void()> locked);

}  // namespace quorvi
