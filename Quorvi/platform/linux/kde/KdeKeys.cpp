#include "Quorvi/platform/linux/kde/KdeKeys.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "Quorvi/platform/linux/shortcuts/KeyNames.h"
#include "Quorvi/platform/linux/xkb/KeyMap.h"

namespace quorvi {
namespace {

using Position = XKeycode;

// The rows of letters and signs, each from the position of its first key on.
constexpr std::pair<Position, std::string_view> rows[] = {
    {10, "1234567890-="}, {24, "QWERTYUIOP[]"}, {38, "ASDFGHJKL;'`"}, {51, "\\ZXCVBNM,./"}};

constexpr std::pair<Position, std::int32_t> otherKeys[] = {
    {9, 0x01000000},   {22, 0x01000003},  {23, 0x01000001},  {36, 0x01000004},  {65, 0x20},
    {78, 0x01000026},  {107, 0x01000009}, {110, 0x01000010}, {111, 0x01000013}, {112, 0x01000016},
    {113, 0x01000012}, {114, 0x01000014}, {115, 0x01000011}, {116, 0x01000015}, {117, 0x01000017},
    {118, 0x01000006}, {119, 0x01000007}, {127, 0x01000008}, {135, 0x01000055}};

constexpr std::int32_t f1 = 0x01000030;

// Those of Western layouts that have a key of their own, as Latin-1 capitals.
constexpr std::pair<std::string_view, std::int32_t> letters[] = {
    {"adiaeresis", 0xC4}, {"odiaeresis", 0xD6}, {"udiaeresis", 0xDC}, {"ssharp", 0xDF},
    {"agrave", 0xC0},     {"egrave", 0xC8},     {"eacute", 0xC9},     {"ugrave", 0xD9},
    {"ccedilla", 0xC7},   {"ntilde", 0xD1},     {"aring", 0xC5},      {"ae", 0xC6},
    {"oslash", 0xD8},     {"igrave", 0xCC},     {"ograve", 0xD2}};

// What a name of XKB's stands for, if a US keyboard or the table above has it.
std::int32_t keyNamed(std::string_view symbol) {
    for (const auto& [name, code] : letters)
        if (name == symbol) return code;
    for (const auto& [first, row] : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            if (symbolName(keyCodeOfPosition(static_cast<Position>(first + i))) == symbol)
                return static_cast<unsigned char>(row[i]);
    return 0;
}

std::int32_t plainKey(KeyCode key, const KeymapText& layout) {
    if (const auto name = functionKeyName(key))
        return f1 + std::atoi(std::string(name->substr(1)).c_str()) - 1;
    const auto position = positionOfKeyCode(key);
    for (const auto& [first, row] : rows)
        if (position >= first && position < first + row.size()) {
            const auto typed = keyNamed(layout.symbolAt(position));
            return typed != 0 ? typed : static_cast<unsigned char>(row[position - first]);
        }
    for (const auto& [place, code] : otherKeys)
        if (place == position) return code;
    return 0;
}

}  // namespace

std::int32_t kdeKeyOf(const SwallowedKey& key, const KeymapText& layout) {
    auto whole = plainKey(key.keyCode, layout);
    if (whole == 0) return 0;
    for (const auto& [flag, modifier] :
         {std::pair(modifierFlag::shift, 0x02000000), std::pair(modifierFlag::control, 0x04000000),
          std::pair(modifierFlag::option, 0x08000000),
          std::pair(modifierFlag::command, 0x10000000)})
        if (key.modifiers & flag) whole |= modifier;
    return whole;
}

}  // namespace quorvi
