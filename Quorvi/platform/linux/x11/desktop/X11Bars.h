#pragma once

#include <vector>

#include "Quorvi/platform/Surroundings.h"

namespace quorvi {

// The strips that panels and docks reserve on the display named in the environment. The work area
// that a window manager publishes is one rectangle for all monitors together, which says nothing
// about one of several. Waits for the X server; any thread.
std::vector<Surroundings::Bar> x11Bars();

}  // namespace quorvi
