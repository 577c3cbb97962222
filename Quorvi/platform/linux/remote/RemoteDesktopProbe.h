#pragma once

#include <chrono>

#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Whether the desktop's own portal for remote desktops remembers the user's leave. Waits for the
// portal, which takes a while if it has to be started first; false if it takes longer than
// `patience`. Any thread.
bool hasRememberingRemoteDesktop(Duration patience = std::chrono::milliseconds(500));

// Whether GNOME's compositor lets programs press keys without a portal. Waits for the bus,
// half a second at most; any thread.
bool hasMutterRemoteDesktop();

}  // namespace quorvi
