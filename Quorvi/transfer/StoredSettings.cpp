#include "Quorvi/transfer/StoredSettings.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/dictation/PreferenceKeys.h"
#include "Quorvi/dictation/RecordingCue.h"
#include "Quorvi/dictation/RecordingTheme.h"
#include "QuorviCore/history/TranscriptRetention.h"
#include "QuorviCore/shortcut/DictationMode.h"
#include "QuorviCore/shortcut/Hotkey.h"
#include "QuorviCore/text/Text.h"
#include "QuorviCore/transcription/TranscriptionOptions.h"

namespace quorvi {

namespace {

struct StoredSetting {
    std::string_view key;
    PreferenceValue standard;  // also says the type
    // The value as it is kept; nothing for one that can't be.
    std::function<std::optional<PreferenceValue>(const PreferenceValue&)> taken;
};

template <class T>
StoredSetting choice(std::string_view key, std::string standard,
                     std::optional<T> (*parse)(std::string_view)) {
    return {key, std::move(standard), [parse](const PreferenceValue& value) {
                return parse(std::get<std::string>(value)) ? std::optional(value) : std::nullopt;
            }};
}

StoredSetting flag(std::string_view key) {
    return {key, true, [](const PreferenceValue& value) { return std::optional(value); }};
}

std::optional<PreferenceValue> canonical(const std::optional<Hotkey>& shortcut) {
    const auto json = shortcut ? shortcut->toCanonicalJson() : std::nullopt;
    if (!json) return std::nullopt;
    return bytesOf(*json);
}

const std::vector<StoredSetting>& settingsThatTravel() {
    static const std::vector<StoredSetting> settings{
        choice(preferenceKey::recordingTheme, "glass", recordingThemeFromRawValue),
        choice(preferenceKey::startSoundStyle, "classic", recordingSoundStyleFromRawValue),
        choice(preferenceKey::stopSoundStyle, "classic", recordingSoundStyleFromRawValue),
        flag(preferenceKey::soundCuesEnabled),
        choice(preferenceKey::mode, "hold", dictationModeFromRawValue),
        choice(preferenceKey::model, "gpt-transcribe", transcriptionModelFromRawValue),
        {preferenceKey::vocabulary, std::string(),
         [](const PreferenceValue& value) -> std::optional<PreferenceValue> {
             return std::string(text::firstCharacters(std::get<std::string>(value),
                                                      TranscriptionOptions::vocabularyLimit));
         }},
        {preferenceKey::hotkey, *canonical(Hotkey::rightOption),
         [](const PreferenceValue& value) {
             return canonical(Hotkey::fromJson(textOf(std::get<Bytes>(value))));
         }},
        flag(preferenceKey::learnCorrectionsAutomatically),
        flag(preferenceKey::keepTranscripts),
        {preferenceKey::transcriptRetention, rawValue(TranscriptRetention::ninetyDays),
         [](const PreferenceValue& value) {
             return transcriptRetentionFromRawValue(std::get<std::int64_t>(value))
                        ? std::optional(value)
                        : std::nullopt;
         }},
    };
    return settings;
}

template <class T>
std::optional<PreferenceValue> asValue(std::optional<T> value) {
    if (!value) return std::nullopt;
    // In place: g++ 12 takes a temporary's other members for uninitialised under the sanitizers.
    return std::optional<PreferenceValue>(std::in_place, *std::move(value));
}

// Of the type that the setting has.
std::optional<PreferenceValue> read(const Preferences& preferences, const StoredSetting& setting) {
    struct Read {
        const Preferences& preferences;
        std::string_view key;
        std::optional<PreferenceValue> operator()(const std::string&) const {
            return asValue(preferences.string(key));
        }
        std::optional<PreferenceValue> operator()(bool) const {
            return asValue(preferences.boolean(key));
        }
        std::optional<PreferenceValue> operator()(std::int64_t) const {
            return asValue(preferences.integer(key));
        }
        std::optional<PreferenceValue> operator()(const Bytes&) const {
            return asValue(preferences.bytes(key));
        }
    };
    return std::visit(Read{preferences, setting.key}, setting.standard);
}

void write(Preferences& preferences, std::string_view key, const PreferenceValue& value) {
    struct Write {
        Preferences& preferences;
        std::string_view key;
        void operator()(const std::string& text) const { preferences.setString(key, text); }
        void operator()(bool isOn) const { preferences.setBoolean(key, isOn); }
        void operator()(std::int64_t number) const { preferences.setInteger(key, number); }
        void operator()(const Bytes& bytes) const { preferences.setBytes(key, bytes); }
    };
    std::visit(Write{preferences, key}, value);
}

PreferenceValue current(const Preferences& preferences, const StoredSetting& setting) {
    auto value = read(preferences, setting);
    if (value) value = setting.taken(*value);
    return value.value_or(setting.standard);
}

}  // namespace

LocalSnapshot::Settings storedSettings(const Preferences& preferences) {
    LocalSnapshot::Settings all;
    for (const auto& setting : settingsThatTravel())
        all.emplace(setting.key, current(preferences, setting));
    return all;
}

void storeSettings(Preferences& preferences, const LocalSnapshot::Settings& settings) {
    for (const auto& setting : settingsThatTravel()) {
        const auto given = settings.find(setting.key);
        if (given == settings.end() || given->second.index() != setting.standard.index()) continue;
        const auto value = setting.taken(given->second);
        if (value && *value != current(preferences, setting))
            write(preferences, setting.key, *value);
    }
}

}  // namespace quorvi
