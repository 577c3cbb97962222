#include "Quorvi/dictation/RecordingCue.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace quorvi {

namespace {

constexpr double peak = 14'000;

// A sweep from one frequency to another.
struct Tone {
    double seconds;
    double fromHertz;
    double toHertz;
};

Tone tone(RecordingCue cue, RecordingSoundStyle style) {
    const bool start = cue == RecordingCue::start;
    switch (style) {
        case RecordingSoundStyle::classic:
            return start ? Tone{0.085, 780, 1100} : Tone{0.095, 880, 600};
        case RecordingSoundStyle::soft:
            return start ? Tone{0.07, 440, 590} : Tone{0.08, 590, 440};
        case RecordingSoundStyle::chime:
            return start ? Tone{0.085, 1040, 1040} : Tone{0.095, 780, 780};
        case RecordingSoundStyle::click:
            return start ? Tone{0.045, 1600, 0.7 * 1600} : Tone{0.055, 1200, 0.7 * 1200};
        case RecordingSoundStyle::silent:
            break;
    }
    return {0, 0, 0};
}

double wave(RecordingSoundStyle style, double phase) {
    if (style == RecordingSoundStyle::chime)
        return 0.72 * std::sin(phase) + 0.28 * std::sin(1.5 * phase);
    return std::sin(phase);
}

// Zero at both ends, so that a cue starts and stops without a crack.
double envelope(RecordingSoundStyle style, double progress) {
    const double swell = std::sin(std::numbers::pi * progress);
    const double decay = style == RecordingSoundStyle::click ? std::exp(-3 * progress) : 1;
    return swell * swell * decay;
}

void append(Bytes& bytes, std::string_view text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
}

void appendLittleEndian(Bytes& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

}  // namespace

std::string_view rawValue(RecordingCue cue) {
    return cue == RecordingCue::start ? "start" : "stop";
}

std::vector<std::int16_t> samples(RecordingCue cue, RecordingSoundStyle style) {
    const auto [seconds, from, to] = tone(cue, style);
    const auto count = static_cast<std::size_t>(seconds * recordingCueSampleRate);
    std::vector<std::int16_t> result(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double t = static_cast<double>(i) / recordingCueSampleRate;
        const double progress = static_cast<double>(i) / static_cast<double>(count - 1);
        const double phase =
            2 * std::numbers::pi * (from * t + (to - from) * t * t / (2 * seconds));
        result[i] =
            static_cast<std::int16_t>(wave(style, phase) * envelope(style, progress) * peak);
    }
    return result;
}

Bytes wavData(RecordingCue cue, RecordingSoundStyle style) {
    constexpr std::uint32_t headerSize = 44;
    constexpr std::uint32_t rate = recordingCueSampleRate;
    const auto content = samples(cue, style);
    const auto size = static_cast<std::uint32_t>(2 * content.size());
    Bytes wav;
    wav.reserve(headerSize + size);
    append(wav, "RIFF");
    appendLittleEndian(wav, headerSize - 8 + size, 4);
    append(wav, "WAVEfmt ");
    appendLittleEndian(wav, 16, 4);  // size of the format that follows
    appendLittleEndian(wav, 1, 2);   // PCM
    appendLittleEndian(wav, 1, 2);   // channels
    appendLittleEndian(wav, rate, 4);
    appendLittleEndian(wav, 2 * rate, 4);  // bytes per second
    appendLittleEndian(wav, 2, 2);         // bytes per frame
    appendLittleEndian(wav, 16, 2);        // bits per sample
    append(wav, "data");
    appendLittleEndian(wav, size, 4);
    for (auto sample : content) appendLittleEndian(wav, static_cast<std::uint16_t>(sample), 2);
    return wav;
}

}  // namespace quorvi
