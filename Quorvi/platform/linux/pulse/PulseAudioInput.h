#pragma once

#include <memory>
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

    std::unique_ptr<AudioCapture> makeCapture() override;
    void prepare() override;

private:
    PulseConnection& connection_;
    Scheduler& scheduler_;
    std::shared_ptr<SpareAacWriter> spare_;  // encoder thread
    SerialExecutor encoder_{"encoder"};
    std::vector<std::weak_ptr<CaptureSession>> sessions_;
};

}  // namespace quorvi
