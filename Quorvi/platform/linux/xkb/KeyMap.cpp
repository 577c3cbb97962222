#include "Quorvi/platform/linux/xkb/KeyMap.h"

#include <array>
#include <utility>

namespace quorvi {
namespace {

struct Run {
    XKeycode first;
    std::array<int, 12> codes;  // -1 ends the run
};

// clang-format off
constexpr Run runs[] = {
    {9, {53, 18, 19, 20, 21, 23, 22, 26, 28, 25, 29, 27}},        // Esc, the digit row up to minus
    {21, {24, 51, 48, -1}},                                       // equals, Backspace, Tab
    {24, {12, 13, 14, 15, 17, 16, 32, 34, 31, 35, 33, 30}},       // the upper letter row
    {36, {36, 59, -1}},                                           // Return, left Control
    {38, {0, 1, 2, 3, 5, 4, 38, 40, 37, 41, 39, 50}},             // the home row, then the grave key
    {50, {56, 42, -1}},                                           // left Shift, backslash
    {52, {6, 7, 8, 9, 11, 45, 46, 43, 47, 44, 60, 67}},           // the lower row, right Shift, keypad *
    {64, {58, 49, 57, -1}},                                       // left Alt, Space, Caps Lock
    {67, {122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 71, -1}}, // F1 to F10, Num Lock
    {79, {89, 91, 92, 78, 86, 87, 88, 69, 83, 84, 85, 82}},       // the keypad, 7 to 0
    {91, {65, -1}},                                               // keypad decimal
    {94, {10, 103, 111, 94, -1}},                                 // the extra ISO key, F11, F12, Ro
    {101, {104, -1}},                                             // Kana
    {104, {76, 62, 75, -1}},                                      // keypad Enter, right Control, keypad /
    {108, {61, -1}},                                              // right Alt
    {110, {115, 126, 116, 123, 124, 119, 125, 121, 114, 117, -1}},// Home … Delete and the arrows
    {121, {74, 73, 72, -1}},                                      // Mute, volume down and up
    {125, {81, -1}},                                              // keypad equals
    {129, {95, -1}},                                              // keypad comma
    {131, {102, 93, 55, 54, 110, -1}},                            // Eisu, Yen, both Windows keys, Menu
    {191, {105, 107, 113, 106, 64, 79, 80, 90, -1}},              // F13 to F20
};
// clang-format on

struct Tables {
    std::array<KeyCode, 256> codes{};
    std::array<XKeycode, 128> positions{};
};

constexpr Tables makeTables() {
    Tables tables;
    for (std::size_t keycode = 0; keycode < tables.codes.size(); ++keycode)
        tables.codes[keycode] = static_cast<KeyCode>(firstForeignKeyCode + keycode);
    for (const auto& run : runs) {
        auto keycode = run.first;
        for (const int code : run.codes) {
            if (code < 0) break;
            tables.codes[keycode] = static_cast<KeyCode>(code);
            tables.positions[static_cast<std::size_t>(code)] = keycode++;
        }
    }
    return tables;
}

constexpr Tables tables = makeTables();

// Keys that users move about with layout options.
constexpr std::pair<std::uint32_t, KeyCode> movableKeys[] = {
    {0xFFE1, keyCode::leftShift},    {0xFFE2, keyCode::rightShift},
    {0xFFE3, keyCode::leftControl},  {0xFFE4, keyCode::rightControl},
    {0xFFE5, capsLockKeyCode},       {0xFFE9, keyCode::leftOption},
    {0xFFEA, keyCode::rightOption},  {0xFFE7, keyCode::leftOption},
    {0xFFE8, keyCode::rightOption},  {0xFFEB, keyCode::leftCommand},
    {0xFFEC, keyCode::rightCommand}, {0xFF1B, keyCode::escape},
};

// Above the keys of a keyboard lie the server's stand-ins for virtual modifiers, which nobody
// presses.
constexpr XKeycode lastMovablePosition = 135;

}  // namespace

KeyCode keyCodeOfPosition(XKeycode keycode) {
    return tables.codes[keycode];
}

KeyCode keyCodeOfKey(XKeycode keycode, std::uint32_t symbol) {
    if (keycode <= lastMovablePosition)
        for (const auto& [movable, code] : movableKeys)
            if (symbol == movable) return code;
    return keyCodeOfPosition(keycode);
}

XKeycode positionOfKeyCode(KeyCode keyCode) {
    if (keyCode < tables.positions.size()) return tables.positions[keyCode];
    const auto keycode = static_cast<XKeycode>(keyCode - firstForeignKeyCode);
    return tables.codes[keycode] == keyCode ? keycode : XKeycode{0};
}

std::uint64_t flagsOfKey(KeyCode keyCode) {
    switch (keyCode) {
        case keyCode::leftControl:
            return modifierFlag::control | modifierFlag::leftControl;
        case keyCode::rightControl:
            return modifierFlag::control | modifierFlag::rightControl;
        case keyCode::leftShift:
            return modifierFlag::shift | modifierFlag::leftShift;
        case keyCode::rightShift:
            return modifierFlag::shift | modifierFlag::rightShift;
        case keyCode::leftCommand:
            return modifierFlag::command | modifierFlag::leftCommand;
        case keyCode::rightCommand:
            return modifierFlag::command | modifierFlag::rightCommand;
        case keyCode::leftOption:
            return modifierFlag::option | modifierFlag::leftOption;
        case keyCode::rightOption:
            return modifierFlag::option | modifierFlag::rightOption;
        default:
            return 0;
    }
}

bool changesFlags(KeyCode keyCode) {
    return keyCode == capsLockKeyCode || flagsOfKey(keyCode) != 0;
}

}  // namespace quorvi
