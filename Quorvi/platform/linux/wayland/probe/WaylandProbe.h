#pragma once

#include "Quorvi/platform/DesktopCapabilities.h"

namespace quorvi {

// Asks the compositor at $WAYLAND_DISPLAY and sway at $SWAYSOCK what they offer. Waits some
// milliseconds, and at most two seconds for one that hangs; at once without the variables. Any
// thread.
DesktopCapabilities probeWayland();

// Whether another program is the compositor's input method, or this one at another place. Waits as
// long.
bool waylandInputMethodIsTaken();

}  // namespace quorvi
