#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace quorvi {

// The look of the recording indicator. Stored by its raw value.
enum class RecordingTheme { glass, midnight, paper };

inline constexpr std::array allRecordingThemes{RecordingTheme::glass, RecordingTheme::midnight,
                                               RecordingTheme::paper};

std::string_view rawValue(RecordingTheme theme);
std::string_view title(RecordingTheme theme);
std::string_view detail(RecordingTheme theme);
std::optional<RecordingTheme> recordingThemeFromRawValue(std::string_view raw);

}  // namespace quorvi
