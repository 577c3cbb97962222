#include "Quorvi/platform/linux/pulse/PulseAudioInput.h"

#include <future>
#include <utility>

#include "Quorvi/platform/linux/pulse/AacFileWriter.h"
#include "Quorvi/platform/linux/pulse/PulseCapture.h"
#include "Quorvi/platform/linux/pulse/PulseLevel.h"

namespace quorvi {

PulseAudioInput::PulseAudioInput(PulseConnection& connection, Scheduler& scheduler)
    : connection_(connection), scheduler_(scheduler), spare_(std::make_shared<SpareAacWriter>()) {}

PulseAudioInput::~PulseAudioInput() {
    for (const auto& weak : sessions_)
        if (const auto session = weak.lock()) session->endNow();
    std::promise<void> done;
    connection_.run([&done] { done.set_value(); });
    done.get_future().wait();
}

std::unique_ptr<AudioCapture> PulseAudioInput::makeCapture() {
    std::erase_if(sessions_, [](const auto& weak) { return weak.expired(); });
    auto session =
        std::make_shared<CaptureSession>(connection_, scheduler_, encoder_, spare_, preferred_);
    sessions_.push_back(session);
    return std::make_unique<PulseCapture>(std::move(session));
}

std::unique_ptr<AudioLevel> PulseAudioInput::makeLevel() {
    return std::make_unique<PulseLevel>(connection_, preferred_);
}

void PulseAudioInput::prepare() {
    encoder_.run([spare = spare_] { spare->prepare(); });
}

}  // namespace quorvi
