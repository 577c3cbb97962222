#pragma once

#include <vector>

#include "Quorvi/platform/Surroundings.h"

namespace quorvi {

// The strips that panels and docks reserve on $DISPLAY. The window manager's work area can't tell:
// it is one rectangle for all monitors together. Waits for the X server; any thread.
std::vector<Surroundings::Bar> x11Bars();

}  // namespace quorvi
