#pragma once

#include <map>
#include <memory>
#include <string>

#include "Quorvi/dictation/RecordingCue.h"
#include "Quorvi/platform/SoundOutput.h"

namespace quorvi {

// Plays the recording cues at half volume. Each clip is synthesised at its first use and kept, so
// that later cues sound without delay. Main thread; one instance lives as long as its owner, the
// dictation controller, and `output` outlives it.
class RecordingSounds {
public:
    explicit RecordingSounds(SoundOutput& output) : output_(output) {}

    // Replaces the cue that is sounding. Does nothing when sounds are off or the style is silent;
    // a cue that is sounding then goes on.
    void play(RecordingCue cue, bool enabled, RecordingSoundStyle style);

private:
    SoundClip& clip(RecordingCue cue, RecordingSoundStyle style);

    SoundOutput& output_;
    std::map<std::string, std::unique_ptr<SoundClip>> clips_;
    SoundClip* playing_ = nullptr;
};

}  // namespace quorvi
