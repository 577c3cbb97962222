#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/AudioCapture.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/pulse/PulseConnection.h"

namespace quorvi {

class CaptureSession;
class SpareAacWriter;

// The sound server's microphone, recorded as AAC. A capture uses three threads: the main thread
// controls it, the sound thread takes samples, and the encoder thread, which alone touches the
// file, encodes and writes them.
//
// Main thread. `connection` outlives it, and it outlives its captures. The destructor waits
// until the last file is complete.
class PulseAudioInput : public AudioInput {
public:
    PulseAudioInput(PulseConnection& connection, Scheduler& scheduler);
    ~PulseAudioInput() override;

    std::vector<Microphone> microphones() const override { return connection_.microphones(); }
    Observable& microphonesChanged() override { return connection_.changed(); }
    void prefer(std::string name) override { preferred_ = std::move(name); }
    std::unique_ptr<AudioCapture> makeCapture() override;
    std::unique_ptr<AudioLevel> makeLevel() override;
    void prepare() override;

private:
    PulseConnection& connection_;
    Scheduler& scheduler_;
    std::shared_ptr<SpareAacWriter> spare_;  // encoder thread
    SerialExecutor encoder_{"encoder"};
    std::vector<std::weak_ptr<CaptureSession>> sessions_;
    std::string preferred_;
};

}  // namespace quorvi
