#pragma once

#include "Quorvi/platform/DesktopCapabilities.h"

namespace quorvi {

// Asks the compositor at $WAYLAND_DISPLAY and sway at $SWAYSOCK what they offer, and the bus for
// what they don't. Waits some milliseconds, and at most twenty seconds for a compositor that is
// busy or hangs (see WaylandConnection) and a second for the bus; at once without the variables.
// Any thread.
DesktopCapabilities probeWayland();

// Whether another program is the compositor's input method, or this one at another place. Waits as
// long.
bool waylandInputMethodIsTaken();

}  // namespace quorvi
