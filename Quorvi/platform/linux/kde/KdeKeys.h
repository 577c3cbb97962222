#pragma once

#include <cstdint>

#include "Quorvi/platform/KeyEventTap.h"
#include "Quorvi/platform/linux/xkb/KeymapText.h"

namespace quorvi {

// Returns the combination as KDE's shortcut service counts it: a key of Qt with its modifiers. 0 if
// it can't be a shortcut there, such as a lone modifier. Letters and signs are those that the key
// types in the layout, else those that a US keyboard has in its place. Pure function, any thread.
std::int32_t kdeKeyOf(const SwallowedKey& key, const KeymapText& layout = KeymapText());

}  // namespace quorvi
