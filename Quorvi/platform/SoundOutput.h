#pragma once

#include <memory>

#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// A short clip, ready to play. Main thread; nothing blocks or throws. Without a sound server it is
// silent.
class SoundClip {
public:
    virtual ~SoundClip() = default;
    // Plays from the beginning, at `volume` (0 to 1) of full scale.
    virtual void play(double volume) = 0;
    virtual void stop() = 0;
};

// The sound server's playback side. Main thread; outlives its clips.
class SoundOutput {
public:
    virtual ~SoundOutput() = default;
    // Loads a 16-bit PCM WAV file.
    virtual std::unique_ptr<SoundClip> load(const Bytes& wav) = 0;
};

}  // namespace quorvi
