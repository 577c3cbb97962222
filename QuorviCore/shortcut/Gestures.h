#pragma once

#include <cstdint>
#include <optional>

#include "QuorviCore/shortcut/DictationMode.h"
#include "QuorviCore/shortcut/Hotkey.h"

namespace quorvi {

// Remembers whether a key-combination shortcut is held, so that auto-repeat and unmatched releases
// are ignored.
struct HotkeyLatch {
    bool isDown = false;

    // Returns the new state if it changed, else nullopt.
    std::optional<bool> transition(bool down) {
        if (down == isDown) return std::nullopt;
        isDown = down;
        return down;
    }
    void reset() { isDown = false; }
};

// Turns a lone modifier key into presses and releases of the shortcut. A combination with any other
// key or mouse button never starts a dictation, and cancels one that the same hold has started. A
// plain value without a clock: the owner times the hold and replaces the value to reset it.
struct ModifierHotkeyGesture {
    enum class Phase { idle, pending, active, chord };
    enum class Action { none, arm, start, finish, toggle, cancel };

    Phase phase = Phase::idle;

    bool isPending() const { return phase == Phase::pending; }
    bool isPressed() const { return phase != Phase::idle; }

    // The shortcut key went down; `eligible` when nothing else is held.
    Action press(bool eligible, DictationMode mode);
    // Another key or button was pressed; the shortcut key may be held.
    Action chord();
    // The hold delay has passed since `arm`.
    Action holdElapsed();
    // The shortcut key went up.
    Action release(DictationMode mode);
};

// Recognises a modifier that is pressed and released alone while the user is choosing a shortcut.
struct StandaloneModifierCapture {
    std::optional<Hotkey> pending;

    // Call for every change of the modifier flags; returns the shortcut once one was chosen.
    std::optional<Hotkey> modifierChanged(KeyCode keyCode, std::uint64_t flags);
};

}  // namespace quorvi
