#include "QuorviCore/settings/SettingKinds.h"

#include "QuorviCore/text/Text.h"

namespace quorvi::settingKind {

std::optional<std::string> Vocabulary::decode(const SettingValue& stored) {
    const auto* text = std::get_if<std::string>(&stored);
    if (!text) return std::nullopt;
    return std::string(text::firstCharacters(*text, TranscriptionOptions::vocabularyLimit));
}

std::optional<SettingValue> Vocabulary::encode(const std::string& value) {
    return decode(value);
}

std::optional<Hotkey> Shortcut::decode(const SettingValue& stored) {
    const auto* json = std::get_if<Bytes>(&stored);
    return json ? Hotkey::fromJson(textOf(*json)) : std::nullopt;
}

std::optional<SettingValue> Shortcut::encode(const Hotkey& value) {
    const auto json = value.toJson();
    if (!json) return std::nullopt;
    return bytesOf(*json);
}

}  // namespace quorvi::settingKind
