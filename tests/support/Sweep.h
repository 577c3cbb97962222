#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>
#include <optional>
#include <vector>

namespace quorvi::test {

// A tone whose pitch tells the time: it rises steadily, so the pitch at any moment of a recording
// says which moment of the original was heard, and a missing or repeated piece shows as a jump.
struct Sweep {
    static constexpr double rate = 44'100;
    static constexpr double from = 300;       // Hz
    static constexpr double perSecond = 900;  // Hz

    static std::vector<std::int16_t> samples(double seconds, double amplitude) {
        std::vector<std::int16_t> result(static_cast<std::size_t>(seconds * rate));
        for (std::size_t i = 0; i < result.size(); ++i) {
            const double t = static_cast<double>(i) / rate;
            const double phase = 2 * std::numbers::pi * (from * t + perSecond * t * t / 2);
            result[i] = static_cast<std::int16_t>(32767 * amplitude * std::sin(phase));
        }
        return result;
    }

    // Which second of the original is heard in the middle of these samples; nothing in silence.
    static std::optional<double> position(const float* samples, std::size_t count) {
        double first = -1, last = -1;
        int periods = -1;
        float loudest = 0;
        for (std::size_t i = 1; i < count; ++i) {
            loudest = std::max(loudest, std::abs(samples[i]));
            if (samples[i - 1] >= 0 || samples[i] < 0) continue;
            last = static_cast<double>(i) - samples[i] / (samples[i] - samples[i - 1]);
            if (++periods == 0) first = last;
        }
        if (loudest < 0.02F || periods < 4) return std::nullopt;
        const double pitch = periods * rate / (last - first);
        const double middle = (first + last) / 2 - static_cast<double>(count) / 2;
        return (pitch - from) / perSecond - middle / rate;
    }
};

}  // namespace quorvi::test
