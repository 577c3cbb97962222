#include "QuorviCore/shortcut/Hotkey.h"

#include <algorithm>
#include <array>
#include <utility>

#include "QuorviCore/json/JsonReading.h"
#include "QuorviCore/json/JsonWriting.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

struct ModifierKey {
    KeyCode keyCode;
    std::uint64_t deviceFlag;
    std::uint64_t familyFlag;
};

constexpr std::array<ModifierKey, 9> modifierKeys{{
    {keyCode::rightCommand, modifierFlag::rightCommand, modifierFlag::command},
    {keyCode::leftCommand, modifierFlag::leftCommand, modifierFlag::command},
    {keyCode::leftShift, modifierFlag::leftShift, modifierFlag::shift},
    {keyCode::leftOption, modifierFlag::leftOption, modifierFlag::option},
    {keyCode::leftControl, modifierFlag::leftControl, modifierFlag::control},
    {keyCode::rightShift, modifierFlag::rightShift, modifierFlag::shift},
    {keyCode::rightOption, modifierFlag::rightOption, modifierFlag::option},
    {keyCode::rightControl, modifierFlag::rightControl, modifierFlag::control},
    {keyCode::fn, modifierFlag::fn, modifierFlag::fn},
}};

constexpr std::uint64_t everyModifierMask = Hotkey::standardModifierMask | 0x80207F;

const ModifierKey* findModifier(KeyCode code) {
    const auto* found = std::ranges::find(modifierKeys, code, &ModifierKey::keyCode);
    return found == modifierKeys.end() ? nullptr : found;
}

constexpr std::array<std::pair<KeyCode, std::string_view>, 20> functionKeyNames{{
    {122, "F1"},  {120, "F2"},  {99, "F3"},   {118, "F4"},  {96, "F5"},
    {97, "F6"},   {98, "F7"},   {100, "F8"},  {101, "F9"},  {109, "F10"},
    {103, "F11"}, {111, "F12"}, {105, "F13"}, {107, "F14"}, {113, "F15"},
    {106, "F16"}, {64, "F17"},  {79, "F18"},  {80, "F19"},  {90, "F20"},
}};

}  // namespace

const Hotkey Hotkey::rightOption{61, 0, "Right ⌥"};
const Hotkey Hotkey::leftControl{59, 0, "Left ⌃"};
const Hotkey Hotkey::rightControl{62, 0, "Right ⌃"};
const Hotkey Hotkey::f8{100, 0, "F8"};
const Hotkey Hotkey::f9{101, 0, "F9"};
const Hotkey Hotkey::f13{105, 0, "F13"};
const Hotkey Hotkey::commandShiftSpace{49, modifierFlag::command | modifierFlag::shift, "⇧⌘Space"};

bool Hotkey::isModifier() const {
    return findModifier(keyCode) != nullptr;
}

std::uint64_t Hotkey::deviceModifierMask() const {
    const auto* key = findModifier(keyCode);
    return key ? key->deviceFlag : 0;
}

bool Hotkey::isSoleModifier(std::uint64_t flags) const {
    const auto* key = findModifier(keyCode);
    return key && (flags & everyModifierMask) == (key->deviceFlag | key->familyFlag);
}

std::optional<Hotkey> Hotkey::standaloneModifier(KeyCode code) {
    switch (code) {
        case quorvi::keyCode::leftControl:
            return leftControl;
        case quorvi::keyCode::rightOption:
            return rightOption;
        case quorvi::keyCode::rightControl:
            return rightControl;
        default:
            return std::nullopt;
    }
}

std::optional<Hotkey> Hotkey::keyCombination(KeyCode code, std::uint64_t flags,
                                             const std::optional<std::string>& characters) {
    using namespace modifierFlag;
    const auto functionKey = functionKeyName(code);
    if (!functionKey && !(flags & (control | option | command))) return std::nullopt;

    std::string label;
    if (flags & control) label += "⌃";
    if (flags & option) label += "⌥";
    if (flags & shift) label += "⇧";
    if (flags & command) label += "⌘";
    if (functionKey) {
        label += *functionKey;
    } else if (code == quorvi::keyCode::space) {
        label += "Space";
    } else if (characters) {
        label += text::upperCased(*characters);
    } else {
        label += "Key " + std::to_string(code);
    }
    return Hotkey{code, flags & standardModifierMask, std::move(label)};
}

std::optional<std::string> Hotkey::toJson() const {
    if (!text::isValidUtf8(label)) return std::nullopt;
    std::string out = R"({"keyCode":)";
    json::appendNumber(out, keyCode);
    out += R"(,"label":)";
    json::appendString(out, label);
    out += R"(,"modifiers":)";
    json::appendNumber(out, modifiers);
    out += '}';
    return out;
}

std::optional<Hotkey> Hotkey::fromJson(std::string_view json) {
    rapidjson::Document document;
    if (!json::parse(document, json) || !document.IsObject()) return std::nullopt;
    const auto code = document.FindMember("keyCode");
    const auto mask = document.FindMember("modifiers");
    const auto name = document.FindMember("label");
    const auto end = document.MemberEnd();
    if (code == end || !code->value.IsUint() || code->value.GetUint() > 0xFFFF) return std::nullopt;
    if (mask == end || !mask->value.IsUint64()) return std::nullopt;
    if (name == end || !name->value.IsString()) return std::nullopt;
    return Hotkey{static_cast<KeyCode>(code->value.GetUint()), mask->value.GetUint64(),
                  std::string(name->value.GetString(), name->value.GetStringLength())};
}

std::optional<std::string_view> functionKeyName(KeyCode code) {
    const auto* found =
        std::ranges::find(functionKeyNames, code, &std::pair<KeyCode, std::string_view>::first);
    if (found == functionKeyNames.end()) return std::nullopt;
    return found->second;
}

Message title(const Hotkey& shortcut) {
    for (const auto& name : {say::rightOptionKey(), say::leftControlKey(), say::rightControlKey(),
                             say::numberedKey(shortcut.keyCode)})
        if (shortcut.label == name.english()) return name;
    return say::verbatim(shortcut.label);
}

}  // namespace quorvi
