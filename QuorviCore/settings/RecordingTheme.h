#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "QuorviCore/messages/Message.h"

namespace quorvi {

// The look of the recording indicator. Stored by its raw value.
enum class RecordingTheme { glass, midnight, paper };

inline constexpr std::array allRecordingThemes{RecordingTheme::glass, RecordingTheme::midnight,
                                               RecordingTheme::paper};

std::string_view rawValue(RecordingTheme theme);
Message title(RecordingTheme theme);
Message detail(RecordingTheme theme);
std::optional<RecordingTheme> recordingThemeFromRawValue(std::string_view raw);

}  // namespace quorvi
