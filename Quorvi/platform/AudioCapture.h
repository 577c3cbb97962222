#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/Task.h"

namespace quorvi {

// How a recording is encoded.
struct AudioSettings {
    int sampleRate = 44'100;  // Hz
    int channels = 1;
    int bitRate = 64'000;  // bit/s, AAC in an MPEG-4 container

    bool operator==(const AudioSettings&) const = default;
};

// Why a recording ended by itself.
enum class CaptureEnd {
    encodingError,  // the encoder or the file failed
    deviceLost      // the microphone or the sound server went away
};

// One recording of the microphone into a file. It is encoded while it runs, so the file is complete
// a few milliseconds after stop(). Main thread; nothing blocks. Owned by the recorder; destroying
// it stops the recording.
class AudioCapture {
public:
    virtual ~AudioCapture() = default;

    // Opens the device and the file (created with mode 0600) and resumes when samples are being
    // captured. On failure throws QuorviError or an exception with a displayable what(), and leaves
    // no file.
    virtual Task<void> record(std::filesystem::path file, AudioSettings settings,
                              std::stop_token stop) = 0;

    // Ends capturing at once and keeps the samples captured so far. Does not call onEnded.
    virtual void stop() = 0;

    // After stop(): completes when the file is written and closed. Throws if that fails.
    virtual Task<void> finished() = 0;

    // Returns the seconds of audio captured so far.
    virtual double currentTime() const = 0;

    // Returns the average power since the last call, in dB relative to full scale: -160 (silence)
    // to 0.
    virtual float averagePower() = 0;

    // Called on the main thread if the recording ends without stop(). May destroy the capture.
    std::function<void(CaptureEnd)> onEnded;
};

// A source that the user can speak into.
struct Microphone {
    std::string name;  // how the sound server knows it, also after a restart
    std::string description;

    bool operator==(const Microphone&) const = default;
};

// Listens to the microphone from its creation on, and keeps only the level. Main thread.
class AudioLevel {
public:
    virtual ~AudioLevel() = default;

    // As AudioCapture::averagePower(); silence also when there is nothing to listen to.
    virtual float averagePower() = 0;
};

// The sound server's recording side. Main thread; outlives its captures and levels.
class AudioInput {
public:
    virtual ~AudioInput() = default;

    // The microphones that are there as last known, the system's default first.
    virtual std::vector<Microphone> microphones() const = 0;
    // They may have changed.
    virtual Observable& microphonesChanged() = 0;
    // Lets what is made from now on listen to the microphone of that name whenever it is there, in
    // place of the default.
    virtual void prefer(std::string name) = 0;

    virtual std::unique_ptr<AudioCapture> makeCapture() = 0;
    virtual std::unique_ptr<AudioLevel> makeLevel() = 0;

    // Prepares in advance what takes time (an encoder), so that the next record() starts sooner.
    // Opens no device. Returns at once.
    virtual void prepare() = 0;
};

}  // namespace quorvi
