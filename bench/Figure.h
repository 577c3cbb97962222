#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

// Helpers of the benchmark programs. A figure is one line on standard output:
// figure NAME VALUE UNIT reference VALUE ratio VALUE
namespace quorvi::bench {

inline double millisecondsNow() {
    return std::chrono::duration<double, std::milli>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

inline double percentile(std::vector<double> values, double p) {
    std::sort(values.begin(), values.end());
    const auto last = values.size() - 1;
    return values[static_cast<std::size_t>(static_cast<double>(last) * p + 0.5)];
}

inline double median(std::vector<double> values) {
    return percentile(std::move(values), 0.5);
}

// `ratio` is reference / value: how many times better than the reference.
inline void figure(const std::string& name, double value, const std::string& unit,
                   std::optional<double> reference = std::nullopt) {
    if (reference)
        std::printf("figure %s %.5g %s reference %.5g ratio %.4g\n", name.c_str(), value,
                    unit.c_str(), *reference, *reference / value);
    else
        std::printf("figure %s %.5g %s reference - ratio -\n", name.c_str(), value, unit.c_str());
    std::fflush(stdout);
}

// The same for figures where more is better: `ratio` is value / reference.
inline void rate(const std::string& name, double value, const std::string& unit, double reference) {
    std::printf("figure %s %.5g %s reference %.5g ratio %.4g\n", name.c_str(), value, unit.c_str(),
                reference, value / reference);
    std::fflush(stdout);
}

}  // namespace quorvi::bench
