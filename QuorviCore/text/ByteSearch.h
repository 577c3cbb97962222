#pragma once

#include <cstddef>
#include <string_view>

namespace quorvi::text {

// Searches many long texts for one short one, sixteen positions at a time if the processor has
// SSE2. The needle is not empty and outlives the object. Thread-safe.
class ByteSearch {
public:
    explicit ByteSearch(std::string_view needle);

    // Returns the first position at or after `begin`; npos if there is none.
    std::size_t find(std::string_view haystack, std::size_t begin) const;

private:
    std::string_view needle_;
    // Two positions in the needle whose bytes are compared first.
    std::size_t first_, second_;
};

}  // namespace quorvi::text
