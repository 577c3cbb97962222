#pragma once

#include <QString>

#include "QuorviCore/shortcut/Hotkey.h"

namespace quorvi {

// Returns a shortcut by the names that are printed on its keys, in the user's language: "Right
// Alt", "Ctrl+Shift+F8", in German "Strg+Entf". Main thread.
QString shown(const Hotkey& shortcut);

// Whether the keyboard's layout makes AltGr of the right Alt key, which is then called by both
// names. Of the whole program, as the translations are. Main thread.
void setRightAltIsAltGr(bool isAltGr);

}  // namespace quorvi
