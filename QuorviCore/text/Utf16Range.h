#pragma once

#include <cstdint>

namespace quorvi {

// A range in UTF-16 code units, as accessibility services describe text. Values come from other
// programs and may be negative.
struct Utf16Range {
    std::int64_t location = 0;
    std::int64_t length = 0;

    std::int64_t end() const { return location + length; }
    bool operator==(const Utf16Range&) const = default;
};

}  // namespace quorvi
