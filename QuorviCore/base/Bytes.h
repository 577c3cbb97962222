#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace quorvi {

using Bytes = std::vector<std::uint8_t>;

// Views the bytes as characters; valid as long as they are.
inline std::string_view textOf(const Bytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

inline Bytes bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

}  // namespace quorvi
