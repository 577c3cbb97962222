#pragma once

#include <map>
#include <memory>
#include <string>

#include "Quorvi/dictation/RecordingCue.h"
#include "Quorvi/platform/SoundOutput.h"

namespace quorvi {

// Plays the recording cues at half volume. A clip is synthesised when it is first used and kept, so
// later cues sound without delay. Main thread; owned by the dictation's session. `output` outlives
// it.
class RecordingSounds {
public:
    explicit RecordingSounds(SoundOutput& output) : output_(output) {}

    // Replaces the cue that is sounding. Does nothing for a silent style; the cue that is sounding
    // then goes on.
    void play(RecordingCue cue, RecordingSoundStyle style);

private:
    SoundClip& clip(RecordingCue cue, RecordingSoundStyle style);

    SoundOutput& output_;
    std::map<std::string, std::unique_ptr<SoundClip>> clips_;
    SoundClip* playing_ = nullptr;
};

}  // namespace quorvi
