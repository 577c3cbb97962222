#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>

#include "QuorviCore/async/Task.h"

namespace quorvi {

struct AudioSettings {
    int sampleRate = 44'100;  // Hz
    int channels = 1;
    int bitRate = 64'000;  // bit/s, AAC in an MPEG-4 container

    bool operator==(const AudioSettings&) const = default;
};

enum class CaptureEnd {
    encodingError,  // the encoder or the file failed
    deviceLost      // the microphone or the sound server went away
};

// One recording of the microphone into a file. Encoding goes on while recording, so that the file
// is complete a few milliseconds after stop(). Main thread; nothing blocks. Destroying a capture
// stops it.
class AudioCapture {
public:
    virtual ~AudioCapture() = default;

    // Opens the device and the file (created with mode 0600) and resumes once samples are being
    // captured. Throws QuorviError or an exception with a displayable what(); then nothing is
    // recorded and no file is left.
    virtual Task<void> record(std::filesystem::path file, AudioSettings settings,
                              std::stop_token stop) = 0;

    // Ends capturing at once; samples already captured are kept. onEnded is not called.
    virtual void stop() = 0;

    // Completes when the file is whole and closed; after stop(). Throws when it could not be
    // completed.
    virtual Task<void> finished() = 0;

    // Seconds of audio captured so far.
    virtual double currentTime() const = 0;

    // Average power since the last call in dB relative to full scale, -160 (silence) to 0.
    virtual float averagePower() = 0;

    // Called on the main thread when the recording ends without stop().
    std::function<void(CaptureEnd)> onEnded;
};

// The sound server's recording side. Main thread.
class AudioInput {
public:
    virtual ~AudioInput() = default;

    virtual std::unique_ptr<AudioCapture> makeCapture() = 0;

    // Makes ready what a capture needs that costs time (an encoder), so that the next record()
    // starts sooner. Opens no device. Returns at once.
    virtual void prepare() = 0;
};

}  // namespace quorvi
