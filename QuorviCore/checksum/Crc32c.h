#pragma once

#include <cstdint>
#include <string_view>

namespace quorvi {

// Returns the CRC-32C (Castagnoli) checksum of the bytes. To checksum data in pieces, pass the
// checksum of the preceding bytes as `previous`. Thread-safe.
std::uint32_t crc32c(std::string_view bytes, std::uint32_t previous = 0);

}  // namespace quorvi
