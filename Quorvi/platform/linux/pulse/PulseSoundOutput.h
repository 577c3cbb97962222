#pragma once

#include <memory>

#include "Quorvi/platform/SoundOutput.h"
#include "Quorvi/platform/linux/pulse/PulseConnection.h"

namespace quorvi {

// Plays clips through the sound server. All clips share one playback stream, which is made by the
// first clip that is played and paused while nothing sounds: starting it again is quicker than
// making a stream, and a paused one costs nothing and lets the device sleep. So at most one clip
// sounds at a time, and a clip that is played replaces the one before.
//
// Main thread. `connection` outlives it and its clips; clips may outlive it.
class PulseSoundOutput : public SoundOutput {
public:
    explicit PulseSoundOutput(PulseConnection& connection);
    ~PulseSoundOutput() override;

    // Throws QuorviError when the bytes are no 16-bit PCM WAV file.
    std::unique_ptr<SoundClip> load(const Bytes& wav) override;

private:
    class Player;
    class Clip;

    PulseConnection& connection_;
    std::shared_ptr<Player> player_;
};

}  // namespace quorvi
