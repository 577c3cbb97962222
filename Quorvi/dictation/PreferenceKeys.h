#pragma once

#include <string_view>

// The keys under which the controller and the application's shell keep preferences.
namespace quorvi::preferenceKey {

inline constexpr std::string_view recordingTheme = "recordingTheme";
inline constexpr std::string_view startSoundStyle = "startSoundStyle";
inline constexpr std::string_view stopSoundStyle = "stopSoundStyle";
inline constexpr std::string_view soundCuesEnabled = "soundCuesEnabled";
inline constexpr std::string_view mode = "mode";
inline constexpr std::string_view model = "model";
inline constexpr std::string_view vocabulary = "vocabulary";
inline constexpr std::string_view hotkey = "hotkey";
inline constexpr std::string_view learnCorrectionsAutomatically = "learnCorrectionsAutomatically";
inline constexpr std::string_view keepTranscripts = "keepTranscripts";
inline constexpr std::string_view transcriptRetention = "transcriptRetention";
inline constexpr std::string_view cloudDatabase = "cloudDatabase";  // an address
inline constexpr std::string_view hasLaunched = "hasLaunchedQuorvi";
inline constexpr std::string_view obsoleteLanguage = "language";  // removed wherever it is found

}  // namespace quorvi::preferenceKey
