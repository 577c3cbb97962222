#include "Quorvi/dictation/RecordingSounds.h"

namespace quorvi {

namespace {
constexpr double volume = 0.5;
}

void RecordingSounds::play(RecordingCue cue, RecordingSoundStyle style) {
    if (style == RecordingSoundStyle::silent) return;
    if (playing_) playing_->stop();
    playing_ = &clip(cue, style);
    playing_->play(volume);
}

SoundClip& RecordingSounds::clip(RecordingCue cue, RecordingSoundStyle style) {
    const auto key = std::string(rawValue(cue)) + "-" + std::string(rawValue(style));
    auto& clip = clips_[key];
    if (!clip) clip = output_.load(wavData(cue, style));
    return *clip;
}

}  // namespace quorvi
