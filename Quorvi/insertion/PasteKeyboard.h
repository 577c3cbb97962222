#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "Quorvi/platform/KeyEventPoster.h"

namespace quorvi {

// Marks every synthesised paste event, so that the keyboard monitor ignores it: it neither counts
// as user input nor triggers the shortcut.
inline constexpr std::int64_t quorviPasteEventMarker = 0x51554F52;

// Builds the paste keystroke, and knows which held keys would change it. Stateless.
struct PasteKeyboard {
    // Command, Shift, Option and Control, in the order in which they are checked.
    static constexpr std::array<KeyCode, 8> modifierKeys{
        keyCode::rightCommand, keyCode::leftCommand, keyCode::leftShift,   keyCode::rightShift,
        keyCode::leftOption,   keyCode::rightOption, keyCode::leftControl, keyCode::rightControl};

    static bool physicalModifiersArePressed(const std::function<bool(KeyCode)>& readKey);

    // Returns Command-V as four marked events. Throws QuorviError if the poster is unavailable.
    static std::array<TapEvent, 4> pasteEvents(const KeyEventPoster& poster);
};

}  // namespace quorvi
