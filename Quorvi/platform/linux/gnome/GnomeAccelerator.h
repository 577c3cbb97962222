#pragma once

#include <string>
#include <string_view>

#include "Quorvi/platform/KeyEventTap.h"

namespace quorvi {

// Key combinations in the notation of GNOME's settings ("<Shift><Super>space"). Pure functions, any
// thread.

// By the key's position ("<Super>0x1a") where its symbol depends on the layout.
std::string gnomeAccelerator(const SwallowedKey& key);

// Whether the combination of a setting is that one.
bool isGnomeAccelerator(std::string_view setting, const SwallowedKey& key);

}  // namespace quorvi
