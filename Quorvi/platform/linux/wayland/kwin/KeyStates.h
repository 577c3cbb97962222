#pragma once

#include <functional>

#include "Quorvi/platform/linux/wayland/WaylandConnection.h"
#include "QuorviCore/shortcut/Hotkey.h"

struct org_kde_kwin_keystate;

namespace quorvi {

// Which modifiers are held, of whatever keyboard, where KWin tells: from version 6 on, to a program
// whose desktop entry asks for it. For adapter sources only; the thread of its connection, which
// outlives it.
class KeyStates {
public:
    static bool isOffered(const WaylandConnection& connection);

    // Calls `told` with each change, as the connection's events are read: the left key stands for
    // both, the right Alt for AltGr.
    KeyStates(WaylandConnection& connection, std::function<void(KeyCode, bool isDown)> told);
    ~KeyStates();
    KeyStates(const KeyStates&) = delete;
    KeyStates& operator=(const KeyStates&) = delete;

private:
    struct Listeners;

    const std::function<void(KeyCode, bool)> told_;
    org_kde_kwin_keystate* states_ = nullptr;
};

}  // namespace quorvi
