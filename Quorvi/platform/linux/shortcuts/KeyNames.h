#pragma once

#include <string>

#include "QuorviCore/shortcut/Hotkey.h"

namespace quorvi {

// Names of keys as desktops write them in their shortcuts: those of XKB. Pure functions, any
// thread.

// The name of what the key types in most layouts, that of the US for letters, digits and signs;
// empty if it has none.
std::string symbolName(KeyCode keyCode);

// Whether the key types that in every layout.
bool isSameInAllLayouts(KeyCode keyCode);

}  // namespace quorvi
