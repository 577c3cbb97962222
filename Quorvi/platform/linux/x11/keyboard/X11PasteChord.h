#pragma once

#include <sys/types.h>
#include <vector>

#include "Quorvi/platform/linux/x11/keyboard/X11Layout.h"

namespace quorvi {

// The keys that paste the clipboard in the active application, as keycodes of this moment.
struct X11PasteChord {
    std::vector<XKeycode> modifiers;
    XKeycode key = 0;

    // Looks up the active window's class and the layout group in force. `pid` names the application
    // when its window says nothing. For adapter sources, on the connection's thread.
    static X11PasteChord forActiveApplication(const X11Connection& connection,
                                              const X11Layout& layout, pid_t pid);
};

}  // namespace quorvi
