#pragma once

namespace quorvi {

// Whether the display named in the environment has what a global input hook needs: XInput 2.2, the
// test extension and the keyboard extension. Waits for the X server; any thread.
bool x11InputHookIsPossible();

}  // namespace quorvi
