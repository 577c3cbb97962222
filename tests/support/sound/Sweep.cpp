#include "tests/support/sound/Sweep.h"

#include <cmath>
#include <numbers>

namespace quorvi::test {

std::vector<std::int16_t> Sweep::samples(double seconds, double amplitude) {
    std::vector<std::int16_t> result(static_cast<std::size_t>(seconds * rate));
    for (std::size_t i = 0; i < result.size(); ++i) {
        const double t = static_cast<double>(i) / rate;
        const double phase = 2 * std::numbers::pi * (from * t + perSecond * t * t / 2);
        result[i] = static_cast<std::int16_t>(32767 * amplitude * std::sin(phase));
    }
    return result;
}

std::optional<double> Sweep::position(const float* samples, std::size_t count) {
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

}  // namespace quorvi::test
