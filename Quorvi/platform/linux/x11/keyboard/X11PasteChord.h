#pragma once

#include <sys/types.h>
#include <vector>

#include "Quorvi/platform/linux/x11/keyboard/PasteChords.h"
#include "Quorvi/platform/linux/x11/keyboard/X11Layout.h"

namespace quorvi {

// The keys that paste the clipboard in the active application, as keycodes of the present layout.
struct X11PasteChord {
    std::vector<XKeycode> modifiers;
    XKeycode key = 0;

    // No key if the application has none for it. Uses the active window's class and the current
    // layout group. `pid` identifies an application whose window has no class. For adapter sources,
    // on the connection's thread.
    static X11PasteChord forActiveApplication(const X11Connection& connection,
                                              const X11Layout& layout, pid_t pid,
                                              const PasteChords& chords);
};

}  // namespace quorvi
