#include "Quorvi/platform/linux/pulse/PulseLevel.h"

#include <mutex>
#include <utility>

#include "Quorvi/platform/linux/pulse/PowerMeter.h"
#include "Quorvi/platform/linux/pulse/PulseRecordStream.h"

namespace quorvi {

namespace {

constexpr int fragmentsPerSecond = 20;

}  // namespace

struct PulseLevel::Listening {
    std::mutex mutex;
    PowerMeter power;                           // under the mutex
    std::shared_ptr<PulseRecordStream> stream;  // sound thread; its events hold this object
};

PulseLevel::PulseLevel(PulseConnection& connection, std::string microphone)
    : connection_(connection), listening_(std::make_shared<Listening>()) {
    connection_.run([&connection, listening = listening_, wanted = std::move(microphone)] {
        PulseRecordStream::Events events;
        events.samples = [listening](std::span<const std::int16_t> samples) {
            const double squares = PowerMeter::squares(samples);
            std::lock_guard lock(listening->mutex);
            listening->power.add(squares, samples.size());
        };
        events.ended = [listening] {
            std::lock_guard lock(listening->mutex);
            listening->power = {};
        };
        listening->stream = std::make_shared<PulseRecordStream>(
            connection,
            PulseRecordStream::Use{.name = "Microphone level",
                                   .microphone = wanted,
                                   .fragmentsPerSecond = fragmentsPerSecond},
            AudioSettings{}, std::move(events));
        listening->stream->begin();
    });
}

PulseLevel::~PulseLevel() {
    connection_.run([listening = listening_] { listening->stream.reset(); });
}

float PulseLevel::averagePower() {
    std::lock_guard lock(listening_->mutex);
    return listening_->power.average();
}

}  // namespace quorvi
