#pragma once

#include <cstdint>

#include "QuorviCore/shortcut/Hotkey.h"

namespace quorvi {

// The physical keys of a PC keyboard: X keycodes (those of the evdev driver) and macOS virtual key
// codes name the same positions. Keys are told apart by where they are, never by what the layout
// prints on them; the Windows key is Command, Alt is Option, and the right Alt key stays right
// Option when the layout makes AltGr of it. Pure functions, any thread.
using XKeycode = std::uint8_t;

// Keys that no Mac has (Print Screen, media keys) get codes of their own from here on, so that each
// stays recognisable.
inline constexpr KeyCode firstForeignKeyCode = 0x100;

KeyCode keyCodeOfPosition(XKeycode keycode);

// The key's code when it is known what it has been made into: its position, except where the user
// moved a modifier or Escape to it (Control in the place of Caps Lock, swapped Alt and Super). A
// level shift (AltGr, or the layers of a layout like Neo) stays the key of its position. `symbol`
// is the X keysym that it types without further modifiers.
KeyCode keyCodeOfKey(XKeycode keycode, std::uint32_t symbol);

// The X keycode of a position; 0 when a PC keyboard has no such key.
XKeycode positionOfKeyCode(KeyCode keyCode);

// The flag bits that a held key contributes: family and side. 0 for a key that is no modifier.
std::uint64_t flagsOfKey(KeyCode keyCode);

// Whether the key changes modifier flags instead of typing: the modifiers and Caps Lock.
bool changesFlags(KeyCode keyCode);

inline constexpr KeyCode capsLockKeyCode = 57;
inline constexpr std::uint64_t capsLockFlag = 0x10000;

}  // namespace quorvi
