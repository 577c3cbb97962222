#pragma once

#include <cstdint>
#include <span>

namespace quorvi {

// The average power of samples. One thread at a time.
class PowerMeter {
public:
    // The sum of the squares, which add() takes: computed outside of a lock.
    static double squares(std::span<const std::int16_t> samples);

    void add(double squares, std::size_t samples);
    // Returns the power since the last call in dB relative to full scale, -160 (silence) to 0; the
    // same as then if there is nothing new.
    float average();

private:
    double squares_ = 0;
    std::size_t samples_ = 0;
    float last_ = -160;
};

}  // namespace quorvi
