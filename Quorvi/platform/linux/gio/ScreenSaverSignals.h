#pragma once

#include <functional>

#include "Quorvi/platform/linux/gio/BusClient.h"

namespace quorvi {

// `covered` is called when the desktop's screen saver covers the screen, locked or not, as long as
// the client lives.
void watchScreenSavers(BusClient& sessionBus, const std::function<void()>& covered);

}  // namespace quorvi
