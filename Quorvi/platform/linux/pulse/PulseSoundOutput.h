#pragma once

#include <memory>

#include "Quorvi/platform/SoundOutput.h"
#include "Quorvi/platform/linux/pulse/PulseConnection.h"

namespace quorvi {

// Plays clips through the sound server. All clips share one playback stream, which the first clip
// creates and which is paused while nothing plays: resuming is faster than creating a stream, and a
// paused one lets the device sleep. A clip that is played replaces the one before.
//
// Main thread. `connection` outlives it and its clips; clips may outlive it.
class PulseSoundOutput : public SoundOutput {
public:
    explicit PulseSoundOutput(PulseConnection& connection);
    ~PulseSoundOutput() override;

    // Throws QuorviError if the bytes are not a 16-bit PCM WAV file.
    std::unique_ptr<SoundClip> load(const Bytes& wav) override;

private:
    class Player;
    class Clip;

    PulseConnection& connection_;
    std::shared_ptr<Player> player_;
};

}  // namespace quorvi
