#pragma once

#include <compare>

namespace quorvi {

// An instant as it is stored and synchronised: seconds since 2001-01-01 00:00:00 UTC, kept as the
// double that was read so that a value survives any number of round trips unchanged.
struct Date {
    // Seconds between 1970-01-01 and 2001-01-01, both 00:00:00 UTC.
    static constexpr double unixEpochOffset = 978307200.0;

    double secondsSinceReferenceDate = 0;

    static constexpr Date fromUnixSeconds(double seconds) { return {seconds - unixEpochOffset}; }
    constexpr double unixSeconds() const { return secondsSinceReferenceDate + unixEpochOffset; }

    auto operator<=>(const Date&) const = default;
};

}  // namespace quorvi
