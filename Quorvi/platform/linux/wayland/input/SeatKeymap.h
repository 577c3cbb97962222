#pragma once

#include <cstdint>
#include <string>

#include "Quorvi/platform/linux/wayland/WaylandConnection.h"

namespace quorvi {

// The text of a keymap in a file that the compositor has handed over; empty if it can't be read.
std::string keymapText(int file, std::uint32_t size);

// The layout of the seat's keyboard, as text; empty without a keyboard. Waits for the compositor.
std::string seatKeymap(WaylandConnection& connection);

}  // namespace quorvi
