#pragma once

#include <cstdint>
#include <string_view>

namespace quorvi {

// The CRC-32C (Castagnoli) checksum of the bytes. `previous` is the checksum of bytes that stand
// before them, so that a text can be checked piece by piece. Thread-safe.
std::uint32_t crc32c(std::string_view bytes, std::uint32_t previous = 0);

}  // namespace quorvi
