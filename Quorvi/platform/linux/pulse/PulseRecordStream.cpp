#include "Quorvi/platform/linux/pulse/PulseRecordStream.h"

#include <pulse/context.h>
#include <pulse/stream.h>

#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/pulse/PulseStreamRelease.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// Time for the first samples: a headset that has to change its profile takes up to 2 s.
constexpr Duration startLimit = 4s;
// A device that delivers nothing for this long is suspended or gone.
constexpr Duration silenceLimit = 2s;
// The next fragment completes the sound that the device is collecting; a device that
// delivers none is not waited for.
constexpr Duration lastFragmentLimit = 25ms;
// A server that is alive then answers in well under a millisecond.
constexpr Duration drainLimit = 250ms;

}  // namespace

struct PulseRecordStream::Callbacks {
    static void stateChanged(pa_stream* stream, void* data) {
        auto* self = static_cast<PulseRecordStream*>(data);
        const auto state = pa_stream_get_state(stream);
        if (state == PA_STREAM_READY) {
            // The server may have chosen another source.
            const char* source = pa_stream_get_device_name(stream);
            if (source && self->connection_.isMonitor(source)) self->end();
        } else if (!PA_STREAM_IS_GOOD(state)) {
            self->end();
        }
    }

    static void dataArrived(pa_stream*, std::size_t, void* data) {
        auto* self = static_cast<PulseRecordStream*>(data);
        self->read();
        if (self->draining_ && !self->ended_) self->pause();
    }

    // Samples that were on their way while the stream was stopped may arrive after the answer to
    // that; with the next answer they are all there.
    static void stopped(pa_stream* stream, int, void* data) {
        static_cast<PulseRecordStream*>(data)->await(
            pa_stream_update_timing_info(stream, &Callbacks::drained, data));
    }

    static void drained(pa_stream*, int, void* data) {
        auto* self = static_cast<PulseRecordStream*>(data);
        self->read();
        self->end();
    }
};

PulseRecordStream::PulseRecordStream(PulseConnection& connection, Use use, AudioSettings settings,
                                     Events events)
    : connection_(connection),
      use_(std::move(use)),
      settings_(settings),
      events_(std::move(events)) {}

PulseRecordStream::~PulseRecordStream() {
    if (awaited_) {
        pa_operation_cancel(awaited_);
        pa_operation_unref(awaited_);
    }
    if (stream_) releaseStream(stream_);
}

void PulseRecordStream::begin() {
    expectData(startLimit);
    connection_.whenReady([weak = weak_from_this()](bool connected) {
        const auto self = weak.lock();
        if (!self || self->ended_) return;
        connected ? self->connect() : self->end();
    });
}

void PulseRecordStream::connect() {
    const auto source = connection_.microphone(use_.microphone);
    if (!source) return end();
    pa_sample_spec format{};
    format.format = PA_SAMPLE_S16NE;
    format.rate = static_cast<std::uint32_t>(settings_.sampleRate);
    format.channels = static_cast<std::uint8_t>(settings_.channels);
    stream_ = pa_stream_new(connection_.context(), use_.name, &format, nullptr);
    if (!stream_) return end();
    pa_stream_set_state_callback(stream_, &Callbacks::stateChanged, this);
    pa_stream_set_read_callback(stream_, &Callbacks::dataArrived, this);

    pa_buffer_attr sizes{};
    sizes.maxlength = sizes.tlength = sizes.prebuf = sizes.minreq = static_cast<std::uint32_t>(-1);
    sizes.fragsize = static_cast<std::uint32_t>(pa_bytes_per_second(&format) /
                                                static_cast<std::size_t>(use_.fragmentsPerSecond));
    // Without DONT_MOVE the server would put the monitor of a speaker in the place of a microphone
    // that is unplugged, and what the computer plays would be recorded.
    constexpr auto flags =
        static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY | PA_STREAM_DONT_MOVE);
    if (pa_stream_connect_record(stream_, source->c_str(), &sizes, flags) < 0) end();
}

void PulseRecordStream::read() {
    bool any = false;
    while (!ended_ && pa_stream_readable_size(stream_) > 0) {
        const void* data = nullptr;
        std::size_t size = 0;
        if (pa_stream_peek(stream_, &data, &size) < 0) return end();
        if (size == 0) break;
        const auto count = size / sizeof(std::int16_t);
        if (data) {
            events_.samples({static_cast<const std::int16_t*>(data), count});
        } else {
            const std::vector<std::int16_t> hole(count);
            events_.samples(hole);
        }
        pa_stream_drop(stream_);
        any = true;
    }
    if (any && !draining_) dataDue_ = std::chrono::steady_clock::now() + silenceLimit;
}

// One timer for the time when data is due; data that arrives moves it on.
void PulseRecordStream::expectData(Duration limit) {
    dataDue_ = std::chrono::steady_clock::now() + limit;
    limit_ = connection_.after(limit, [this] {
        const auto left = dataDue_ - std::chrono::steady_clock::now();
        if (left <= Duration::zero()) return end();
        const auto due = dataDue_;
        expectData(left);
        dataDue_ = due;
    });
}

void PulseRecordStream::drain() {
    if (ended_ || std::exchange(draining_, true)) return;
    if (!stream_ || pa_stream_get_state(stream_) != PA_STREAM_READY) return end();
    limit_ = connection_.after(lastFragmentLimit, [this] { pause(); });
}

void PulseRecordStream::pause() {
    if (std::exchange(pausing_, true)) return;
    limit_ = connection_.after(drainLimit, [this] { end(); });
    await(pa_stream_cork(stream_, 1, &Callbacks::stopped, this));
}

void PulseRecordStream::await(pa_operation* operation) {
    if (awaited_) pa_operation_unref(awaited_);
    awaited_ = operation;
    if (!operation) end();
}

void PulseRecordStream::end() {
    if (std::exchange(ended_, true)) return;
    limit_.cancel();
    const auto told = std::exchange(events_, {});
    told.ended();
}

}  // namespace quorvi
