#pragma once

#include <memory>
#include <vector>

#include "Quorvi/platform/AudioCapture.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/pulse/PulseConnection.h"

namespace quorvi {

class CaptureSession;
class SpareAacWriter;

// The microphone as the sound server offers it, recorded as AAC. A capture is worked on by three
// threads: the main thread asks, the sound thread takes samples, and the encoder thread, the only
// one that touches the file, encodes and writes them meanwhile.
//
// Main thread. `connection` outlives it, and it outlives its captures. The destructor waits for the
// file that is being completed.
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
