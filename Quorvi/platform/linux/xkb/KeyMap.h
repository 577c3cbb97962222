#pragma once

#include <cstdint>

#include "QuorviCore/shortcut/Hotkey.h"

namespace quorvi {

// Maps the physical keys of a PC keyboard: XKB keycodes (evdev's plus 8) to macOS virtual key
// codes, by position, whatever the layout prints on them. The Windows key is Command, Alt is
// Option, and the right Alt key stays right Option if the layout makes it AltGr. Pure functions,
// any thread.
using XKeycode = std::uint8_t;

// Keys that no Mac has (Print Screen, media keys) get distinct codes from here on.
inline constexpr KeyCode firstForeignKeyCode = 0x100;

KeyCode keyCodeOfPosition(XKeycode keycode);

// The key's code by its position, except if the user has moved a modifier or Escape to it (Caps
// Lock as Control, swapped Alt and Super). A level shift (AltGr, the layers of Neo) keeps its
// position's code. `symbol` is the keysym that the key types without modifiers.
KeyCode keyCodeOfKey(XKeycode keycode, std::uint32_t symbol);

// The keycode of a position; 0 if a PC keyboard has no such key.
XKeycode positionOfKeyCode(KeyCode keyCode);

// The flag bits of a held key: family and side; 0 if it is not a modifier.
std::uint64_t flagsOfKey(KeyCode keyCode);

// Whether the key changes modifier flags instead of typing: the modifiers and Caps Lock.
bool changesFlags(KeyCode keyCode);

inline constexpr KeyCode capsLockKeyCode = 57;
inline constexpr std::uint64_t capsLockFlag = 0x10000;

}  // namespace quorvi
