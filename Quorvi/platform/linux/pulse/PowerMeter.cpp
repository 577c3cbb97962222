#include "Quorvi/platform/linux/pulse/PowerMeter.h"

#include <algorithm>
#include <cmath>

namespace quorvi {

namespace {

constexpr float silence = -160;

}  // namespace

double PowerMeter::squares(std::span<const std::int16_t> samples) {
    double sum = 0;
    for (const double sample : samples) sum += sample * sample;
    return sum;
}

void PowerMeter::add(double squares, std::size_t samples) {
    squares_ += squares;
    samples_ += samples;
}

float PowerMeter::average() {
    if (samples_ == 0) return last_;
    const double mean = squares_ / static_cast<double>(samples_) / (32768.0 * 32768.0);
    squares_ = 0;
    samples_ = 0;
    last_ = mean > 0 ? std::max(silence, static_cast<float>(10 * std::log10(mean))) : silence;
    return last_;
}

}  // namespace quorvi
