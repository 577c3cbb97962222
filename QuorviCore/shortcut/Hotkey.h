#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "QuorviCore/messages/Message.h"

namespace quorvi {

using KeyCode = std::uint16_t;  // macOS virtual key code: a physical key, whatever its layout

// Bits of a modifier-flag mask, in the layout of the macOS event flags.
namespace modifierFlag {
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
inline constexpr std::uint64_t fn = 0x800000;
inline constexpr std::uint64_t leftControl = 0x1;
inline constexpr std::uint64_t leftShift = 0x2;
inline constexpr std::uint64_t rightShift = 0x4;
inline constexpr std::uint64_t leftCommand = 0x8;
inline constexpr std::uint64_t rightCommand = 0x10;
inline constexpr std::uint64_t leftOption = 0x20;
inline constexpr std::uint64_t rightOption = 0x40;
inline constexpr std::uint64_t rightControl = 0x2000;
}  // namespace modifierFlag

namespace keyCode {
inline constexpr KeyCode escape = 53;
inline constexpr KeyCode space = 49;
inline constexpr KeyCode v = 9;
inline constexpr KeyCode rightCommand = 54;
inline constexpr KeyCode leftCommand = 55;
inline constexpr KeyCode leftShift = 56;
inline constexpr KeyCode leftOption = 58;
inline constexpr KeyCode leftControl = 59;
inline constexpr KeyCode rightShift = 60;
inline constexpr KeyCode rightOption = 61;
inline constexpr KeyCode rightControl = 62;
inline constexpr KeyCode fn = 63;
}  // namespace keyCode

// The user's global shortcut: a lone modifier key, or a key with modifiers. A plain value.
struct Hotkey {
    static constexpr std::uint64_t standardModifierMask = 0x1E0000;

    KeyCode keyCode = 0;
    std::uint64_t modifiers = 0;  // required standard modifiers; 0 for a lone modifier or bare key
    std::string label;            // shown to the user

    static const Hotkey rightOption;  // the default
    static const Hotkey leftControl;
    static const Hotkey rightControl;
    static const Hotkey f8;
    static const Hotkey f9;
    static const Hotkey f13;
    static const Hotkey commandShiftSpace;

    bool isModifier() const;

    // The bit of the shortcut's own key in a flag mask; 0 when the key is no modifier.
    std::uint64_t deviceModifierMask() const;

    // Whether this modifier key, on its own side, is the only modifier held.
    bool isSoleModifier(std::uint64_t flags) const;

    // The modifier-only shortcut of a key that may be one: either Control or right Option.
    static std::optional<Hotkey> standaloneModifier(KeyCode keyCode);

    // The shortcut that a key press makes while the user is choosing one, or nothing when it is
    // refused. `characters` is the key's text without regard to modifiers.
    static std::optional<Hotkey> keyCombination(KeyCode keyCode, std::uint64_t flags,
                                                const std::optional<std::string>& characters);

    // The stored form: an object with the sorted keys "keyCode", "label" and "modifiers", so that
    // equal shortcuts are equal bytes on every machine. nullopt if the label is not valid UTF-8.
    std::optional<std::string> toJson() const;
    // nullopt if a key is missing or its value has the wrong type.
    static std::optional<Hotkey> fromJson(std::string_view json);

    bool operator==(const Hotkey&) const = default;
};

// Returns the label for the interface, which translates the names of keys.
Message title(const Hotkey& shortcut);

// The name on a function key's cap ("F1" to "F20"), nothing for any other key.
std::optional<std::string_view> functionKeyName(KeyCode keyCode);

}  // namespace quorvi
