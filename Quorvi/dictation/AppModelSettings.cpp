#include <algorithm>
#include <utility>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/dictation/PreferenceKeys.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

// One setting that travels between the user's computers. `apply` leaves out what it can't take.
struct AppModel::SyncedSetting {
    std::string_view key;
    std::function<std::optional<PreferenceValue>(const AppModel&)> read;
    std::function<void(AppModel&, const PreferenceValue&)> apply;

    // A setting of one type of value.
    template <class T>
    static SyncedSetting value(std::string_view key,
                               std::function<std::optional<T>(const AppModel&)> get,
                               std::function<void(AppModel&, const T&)> set) {
        return {key,
                [get = std::move(get)](const AppModel& model) -> std::optional<PreferenceValue> {
                    std::optional<PreferenceValue> result;
                    if (auto current = get(model)) result.emplace(*std::move(current));
                    return result;
                },
                [set = std::move(set)](AppModel& model, const PreferenceValue& received) {
                    if (const auto* value = std::get_if<T>(&received)) set(model, *value);
                }};
    }

    // An enumeration, which travels as its raw string.
    template <class T>
    static SyncedSetting choice(std::string_view key, std::function<T(const AppModel&)> get,
                                std::function<void(AppModel&, T)> set,
                                std::optional<T> (*parse)(std::string_view)) {
        return value<std::string>(
            key, [get](const AppModel& model) { return std::string(rawValue(get(model))); },
            [set, parse](AppModel& model, const std::string& raw) {
                if (const auto known = parse(raw)) set(model, *known);
            });
    }

    static SyncedSetting sound(std::string_view key, RecordingCue cue) {
        return choice<RecordingSoundStyle>(
            key, [cue](const AppModel& model) { return model.soundStyle(cue); },
            [cue](AppModel& model, RecordingSoundStyle style) { model.setSoundStyle(cue, style); },
            recordingSoundStyleFromRawValue);
    }
};

// In the order in which received values are applied.
const std::vector<AppModel::SyncedSetting>& AppModel::syncedSettings() {
    using Setting = SyncedSetting;
    static const std::vector<Setting> settings{
        Setting::choice<RecordingTheme>(preferenceKey::recordingTheme, &AppModel::recordingTheme,
                                        &AppModel::setRecordingTheme, recordingThemeFromRawValue),
        Setting::sound(preferenceKey::startSoundStyle, RecordingCue::start),
        Setting::sound(preferenceKey::stopSoundStyle, RecordingCue::stop),
        Setting::value<bool>(preferenceKey::soundCuesEnabled, &AppModel::soundCuesEnabled,
                             &AppModel::setSoundCuesEnabled),
        Setting::choice<DictationMode>(preferenceKey::mode, &AppModel::mode, &AppModel::setMode,
                                       dictationModeFromRawValue),
        Setting::choice<TranscriptionModel>(preferenceKey::model, &AppModel::transcriptionModel,
                                            &AppModel::setTranscriptionModel,
                                            transcriptionModelFromRawValue),
        Setting::value<std::string>(preferenceKey::vocabulary, &AppModel::vocabulary,
                                    &AppModel::receiveVocabulary),
        Setting::value<Bytes>(
            preferenceKey::hotkey,
            [](const AppModel& model) -> std::optional<Bytes> {
                const auto json = model.shortcut().toCanonicalJson();
                if (!json) return std::nullopt;
                return bytesOf(*json);
            },
            [](AppModel& model, const Bytes& json) {
                if (auto shortcut = Hotkey::fromJson(textOf(json)))
                    model.setShortcut(*std::move(shortcut));
            }),
        Setting::value<bool>(
            preferenceKey::learnCorrectionsAutomatically,
            [](const AppModel& model) {
                return model.environment_.corrections.learnsAutomatically();
            },
            [](AppModel& model, bool learns) {
                auto& corrections = model.environment_.corrections;
                if (learns != corrections.learnsAutomatically())
                    corrections.setLearnsAutomatically(learns);
            }),
        Setting::value<bool>(
            preferenceKey::keepTranscripts,
            [](const AppModel& model) { return model.environment_.history.keepTranscripts(); },
            [](AppModel& model, bool keep) {
                auto& history = model.environment_.history;
                if (keep != history.keepTranscripts()) history.setKeepTranscripts(keep);
            }),
        Setting::value<std::int64_t>(
            preferenceKey::transcriptRetention,
            [](const AppModel& model) {
                return static_cast<std::int64_t>(rawValue(model.environment_.history.retention()));
            },
            [](AppModel& model, std::int64_t days) {
                auto& history = model.environment_.history;
                const auto retention = transcriptRetentionFromRawValue(days);
                if (retention && *retention != history.retention())
                    history.setRetention(*retention);
            }),
    };
    return settings;
}

void AppModel::receiveVocabulary(const std::string& text) {
    if (text == vocabulary_) return;
    constexpr auto limit = TranscriptionOptions::vocabularyLimit;
    setVocabulary(std::string(text::firstCharacters(text, limit)));
}

AppModel::SyncSettings AppModel::syncSettings() const {
    SyncSettings settings;
    for (const auto& setting : syncedSettings())
        if (auto value = setting.read(*this)) settings.emplace(setting.key, *std::move(value));
    return settings;
}

// The setters leave alone, and write nothing for, a value that is the current one already.
void AppModel::applySyncSettings(const SyncSettings& settings) {
    for (const auto& setting : syncedSettings()) {
        const auto received = settings.find(setting.key);
        if (received != settings.end()) setting.apply(*this, received->second);
    }
}

}  // namespace quorvi
