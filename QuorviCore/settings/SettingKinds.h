#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "QuorviCore/history/TranscriptRetention.h"
#include "QuorviCore/settings/RecordingSoundStyle.h"
#include "QuorviCore/settings/RecordingTheme.h"
#include "QuorviCore/settings/SettingValue.h"
#include "QuorviCore/shortcut/DictationMode.h"
#include "QuorviCore/shortcut/Hotkey.h"
#include "QuorviCore/transcription/SpeechServiceKind.h"
#include "QuorviCore/transcription/TranscriptionOptions.h"

// How the values of settings are stored. Each kind has a type `Value` and
//   decode: the value that a stored one stands for, nullopt if it has the wrong type or no meaning;
//   encode: the stored form, nullopt for a value that can't be stored.
namespace quorvi::settingKind {

// Stored as it is.
template <class T>
struct Plain {
    using Value = T;
    static std::optional<T> decode(const SettingValue& stored) {
        const auto* value = std::get_if<T>(&stored);
        return value ? std::optional<T>(*value) : std::nullopt;
    }
    static std::optional<SettingValue> encode(const T& value) {
        // In place: g++ 12 takes a temporary's other members for uninitialised.
        return std::optional<SettingValue>(std::in_place, value);
    }
};
using Flag = Plain<bool>;
using Text = Plain<std::string>;
using Number = Plain<std::int64_t>;
using Data = Plain<Bytes>;

// An enumeration, stored by its raw value: a text or a number.
template <class E, auto parse>
struct Choice {
    using Value = E;
    using Raw = std::conditional_t<std::is_same_v<decltype(rawValue(E())), std::int64_t>,
                                   std::int64_t, std::string>;
    static std::optional<E> decode(const SettingValue& stored) {
        const auto* raw = std::get_if<Raw>(&stored);
        return raw ? parse(*raw) : std::nullopt;
    }
    static std::optional<SettingValue> encode(const E& value) {
        return std::optional<SettingValue>(std::in_place, Raw(rawValue(value)));
    }
};
using Mode = Choice<DictationMode, dictationModeFromRawValue>;
using Model = Choice<TranscriptionModel, transcriptionModelFromRawValue>;
using Retention = Choice<TranscriptRetention, transcriptRetentionFromRawValue>;
using ServiceKind = Choice<SpeechServiceKind, speechServiceKindFromRawValue>;
using Sound = Choice<RecordingSoundStyle, recordingSoundStyleFromRawValue>;
using Theme = Choice<RecordingTheme, recordingThemeFromRawValue>;

// A text of which only so many user-perceived characters are used.
struct Vocabulary {
    using Value = std::string;
    static std::optional<std::string> decode(const SettingValue& stored);
    static std::optional<SettingValue> encode(const std::string& value);
};

// JSON with sorted keys, so that equal shortcuts are equal bytes on every machine.
struct Shortcut {
    using Value = Hotkey;
    static std::optional<Hotkey> decode(const SettingValue& stored);
    static std::optional<SettingValue> encode(const Hotkey& value);
};

}  // namespace quorvi::settingKind
