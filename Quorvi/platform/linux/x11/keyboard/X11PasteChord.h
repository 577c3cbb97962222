#pragma once

#include <sys/types.h>
#include <vector>

#include "Quorvi/platform/linux/keyboard/PasteChords.h"
#include "Quorvi/platform/linux/x11/keyboard/X11Layout.h"

namespace quorvi {

// The keys that paste the clipboard in the active application, as keycodes of the present layout.
struct X11PasteChord {
    std::vector<XKeycode> modifiers;
    XKeycode key = 0;

    // By the active window's class; `pid` identifies an application whose window has none. For
    // adapter sources, on the connection's thread, as the next.
    static PasteChords::Choice choiceForActiveApplication(const X11Connection& connection,
                                                          pid_t pid, const PasteChords& chords);

    // No key if the application has none for it. Uses also the current layout group.
    static X11PasteChord forActiveApplication(const X11Connection& connection,
                                              const X11Layout& layout, pid_t pid,
                                              const PasteChords& chords);
};

}  // namespace quorvi
