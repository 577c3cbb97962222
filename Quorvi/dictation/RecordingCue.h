#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "QuorviCore/base/Bytes.h"
#include "QuorviCore/settings/RecordingSoundStyle.h"

namespace quorvi {

// The two moments of a recording that a sound marks.
enum class RecordingCue { start, stop };

inline constexpr std::array allRecordingCues{RecordingCue::start, RecordingCue::stop};
inline constexpr int recordingCueSampleRate = 44'100;

std::string_view rawValue(RecordingCue cue);

// A cue's mono samples, and these as a complete WAV file. A silent cue has no samples. Pure
// functions of any thread.
std::vector<std::int16_t> samples(RecordingCue cue,
                                  RecordingSoundStyle style = RecordingSoundStyle::classic);
Bytes wavData(RecordingCue cue, RecordingSoundStyle style = RecordingSoundStyle::classic);

}  // namespace quorvi
