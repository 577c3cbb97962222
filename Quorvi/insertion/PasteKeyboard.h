#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "Quorvi/platform/KeyEventPoster.h"

namespace quorvi {

// Stamped into every synthesised paste event, so that the keyboard monitor ignores the program's
// own keystrokes: they never count as user input and never trigger the shortcut.
inline constexpr std::int64_t quorviPasteEventMarker = 0x51554F52;

// Builds the paste keystroke, and knows which keys would spoil it. No state.
struct PasteKeyboard {
    // Command, Shift, Option and Control, right and left, in the order they are looked at.
    static constexpr std::array<KeyCode, 8> modifierKeys{
        keyCode::rightCommand, keyCode::leftCommand, keyCode::leftShift,   keyCode::rightShift,
        keyCode::leftOption,   keyCode::rightOption, keyCode::leftControl, keyCode::rightControl};

    static bool physicalModifiersArePressed(const std::function<bool(KeyCode)>& readKey);

    // Command-V as four marked events. Throws QuorviError when the poster can't send any.
    static std::array<TapEvent, 4> pasteEvents(const KeyEventPoster& poster);
};

}  // namespace quorvi
