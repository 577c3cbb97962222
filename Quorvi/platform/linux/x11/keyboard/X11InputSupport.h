#pragma once

namespace quorvi {

// Whether $DISPLAY offers what the global input hook needs: XInput 2.2, XTest and XKB. Waits for
// the X server; any thread.
bool x11InputHookIsPossible();

// Whether the layout of $DISPLAY, or one of several, makes AltGr of the right Alt key. Waits for
// the X server; any thread.
bool x11RightAltIsAltGr();

}  // namespace quorvi
