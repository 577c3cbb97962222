#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace quorvi::test {

// A tone whose pitch tells the time: it rises steadily, so the pitch at any moment of a recording
// says which moment of the original was heard, and a missing or repeated piece shows as a jump.
struct Sweep {
    static constexpr double rate = 44'100;
    static constexpr double from = 300;       // Hz
    static constexpr double perSecond = 900;  // Hz

    static std::vector<std::int16_t> samples(double seconds, double amplitude);

    // Which second of the original is heard in the middle of these samples; nothing in silence.
    static std::optional<double> position(const float* samples, std::size_t count);
};

}  // namespace quorvi::test
