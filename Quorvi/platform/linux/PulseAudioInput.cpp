#include "Quorvi/platform/linux/PulseAudioInput.h"

#include "Quorvi/platform/linux/AacFileWriter.h"
#include "Quorvi/platform/linux/PulseCapture.h"

namespace quorvi {

PulseAudioInput::PulseAudioInput(PulseConnection& connection, Scheduler& scheduler)
    : connection_(connection), scheduler_(scheduler), spare_(std::make_shared<SpareAacWriter>()) {}

PulseAudioInput::~PulseAudioInput() = default;

std::unique_ptr<AudioCapture> PulseAudioInput::makeCapture() {
    return std::make_unique<PulseCapture>(connection_, scheduler_, encoder_, spare_);
}

void PulseAudioInput::prepare() {
    encoder_.run([spare = spare_] { spare->prepare(); });
}

}  // namespace quorvi
