#include "Quorvi/platform/linux/pulse/PulseSoundOutput.h"

#include <pulse/proplist.h>
#include <pulse/stream.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/pulse/PulseStreamRelease.h"
#include "Quorvi/platform/linux/pulse/WavFile.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// Time for the end of a clip to get through the device before the stream is paused.
constexpr Duration tail = 1s;
// A cue that could only sound later than this would mislead.
constexpr Duration latestStart = 500ms;
constexpr std::size_t latencyPerSecond = 50;  // the server's buffer holds 20 ms

void release(pa_operation* operation) {
    if (operation) pa_operation_unref(operation);
}

std::vector<std::int16_t> scaled(const std::vector<std::int16_t>& samples, double volume) {
    std::vector<std::int16_t> result(samples.size());
    std::ranges::transform(samples, result.begin(), [volume](std::int16_t sample) {
        return static_cast<std::int16_t>(std::lround(sample * volume));
    });
    return result;
}

}  // namespace

// The stream that all clips share. Sound thread only.
class PulseSoundOutput::Player {
public:
    explicit Player(PulseConnection& connection) : connection_(connection) {}
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;
    ~Player() { drop(); }

    void play(const std::shared_ptr<const PcmSound>& sound, double volume) {
        if (!connection_.context()) return;
        sound_ = sound;
        volume_ = std::clamp(volume, 0.0, 1.0);
        asked_ = std::chrono::steady_clock::now();
        if (stream_ && !hasFormatOf(*sound)) drop();
        if (!stream_) return open();
        if (pa_stream_get_state(stream_) == PA_STREAM_READY) start();
    }

    void stop(const std::shared_ptr<const PcmSound>& sound) {
        if (sound_ != sound) return;
        sound_ = nullptr;
        if (stream_ && pa_stream_get_state(stream_) == PA_STREAM_READY) pause();
    }

private:
    void open() {
        pa_sample_spec format{};
        format.format = PA_SAMPLE_S16NE;
        format.rate = sound_->sampleRate;
        format.channels = sound_->channels;
        // The desktop's volume for short system sounds applies.
        auto* properties = pa_proplist_new();
        pa_proplist_sets(properties, PA_PROP_MEDIA_ROLE, "event");
        stream_ = pa_stream_new_with_proplist(connection_.context(), "Recording sounds", &format,
                                              nullptr, properties);
        pa_proplist_free(properties);
        if (!stream_) return;
        pa_stream_set_state_callback(stream_, &Player::stateChanged, this);

        pa_buffer_attr sizes{};
        sizes.maxlength = sizes.minreq = sizes.fragsize = static_cast<std::uint32_t>(-1);
        sizes.tlength = static_cast<std::uint32_t>(pa_bytes_per_second(&format) / latencyPerSecond);
        // A clip starts with its first byte, however short it is. Its volume is in its samples,
        // since PipeWire ignores the one that a stream is made with.
        sizes.prebuf = 0;
        if (pa_stream_connect_playback(stream_, nullptr, &sizes, PA_STREAM_ADJUST_LATENCY, nullptr,
                                       nullptr) < 0)
            drop();
    }

    static void stateChanged(pa_stream* stream, void* data) {
        auto* self = static_cast<Player*>(data);
        const auto state = pa_stream_get_state(stream);
        if (state == PA_STREAM_READY) self->start();
        if (!PA_STREAM_IS_GOOD(state)) self->drop();
    }

    // Drop what is still queued, so that clips never overlap.
    void start() {
        if (!sound_ || std::chrono::steady_clock::now() - asked_ > latestStart) return pause();
        const auto samples = scaled(sound_->samples, volume_);
        release(pa_stream_flush(stream_, nullptr, nullptr));
        pa_stream_write(stream_, samples.data(), samples.size() * sizeof(std::int16_t), nullptr, 0,
                        PA_SEEK_RELATIVE);
        release(pa_stream_cork(stream_, 0, nullptr, nullptr));
        const std::chrono::duration<double> length(sound_->seconds());
        idle_ = connection_.after(std::chrono::duration_cast<Duration>(length) + tail,
                                  [this] { pause(); });
    }

    void pause() {
        idle_.cancel();
        release(pa_stream_cork(stream_, 1, nullptr, nullptr));
        release(pa_stream_flush(stream_, nullptr, nullptr));
    }

    void drop() {
        idle_.cancel();
        if (auto* former = std::exchange(stream_, nullptr)) releaseStream(former);
    }

    bool hasFormatOf(const PcmSound& sound) const {
        const auto* format = pa_stream_get_sample_spec(stream_);
        return format->rate == sound.sampleRate && format->channels == sound.channels;
    }

    PulseConnection& connection_;
    pa_stream* stream_ = nullptr;
    std::shared_ptr<const PcmSound> sound_;  // played last
    double volume_ = 1;
    TimePoint asked_{};
    Timer idle_;
};

class PulseSoundOutput::Clip : public SoundClip {
public:
    Clip(PulseConnection& connection, std::shared_ptr<Player> player, PcmSound sound)
        : connection_(connection),
          player_(std::move(player)),
          sound_(std::make_shared<const PcmSound>(std::move(sound))) {}
    Clip(const Clip&) = delete;
    Clip& operator=(const Clip&) = delete;
    ~Clip() override { Clip::stop(); }

    void play(double volume) override {
        connection_.run(
            [player = player_, sound = sound_, volume] { player->play(sound, volume); });
    }
    void stop() override {
        connection_.run([player = player_, sound = sound_] { player->stop(sound); });
    }

private:
    PulseConnection& connection_;
    std::shared_ptr<Player> player_;
    std::shared_ptr<const PcmSound> sound_;
};

// The player is always destroyed on the sound thread.
PulseSoundOutput::PulseSoundOutput(PulseConnection& connection)
    : connection_(connection), player_(new Player(connection), [&connection](Player* player) {
          connection.run([player] { delete player; });
      }) {}

PulseSoundOutput::~PulseSoundOutput() = default;

std::unique_ptr<SoundClip> PulseSoundOutput::load(const Bytes& wav) {
    return std::make_unique<Clip>(connection_, player_, readWavFile(wav));
}

}  // namespace quorvi
