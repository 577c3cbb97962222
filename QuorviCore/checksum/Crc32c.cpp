#include "QuorviCore/checksum/Crc32c.h"

#include <array>
#include <cstddef>

namespace quorvi {

namespace {

constexpr std::uint32_t polynomial = 0x82F63B78;  // reflected
constexpr std::size_t step = 8;

// tables[k][b]: the checksum of byte b followed by k zero bytes.
using Tables = std::array<std::array<std::uint32_t, 256>, step>;

constexpr Tables makeTables() {
    Tables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t rest = byte;
        for (int bit = 0; bit < 8; ++bit) rest = (rest >> 1) ^ (rest & 1 ? polynomial : 0);
        tables[0][byte] = rest;
    }
    for (std::size_t k = 1; k < step; ++k)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const auto before = tables[k - 1][byte];
            tables[k][byte] = (before >> 8) ^ tables[0][before & 0xFF];
        }
    return tables;
}

constexpr Tables tables = makeTables();

}  // namespace

std::uint32_t crc32c(std::string_view bytes, std::uint32_t previous) {
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
    auto size = bytes.size();
    auto rest = ~previous;
    // Eight table look-ups that don't wait for one another, instead of eight that do.
    for (; size >= step; at += step, size -= step) {
        const std::uint32_t low = rest ^ (std::uint32_t(at[0]) | std::uint32_t(at[1]) << 8 |
                                          std::uint32_t(at[2]) << 16 | std::uint32_t(at[3]) << 24);
        rest = tables[7][low & 0xFF] ^ tables[6][(low >> 8) & 0xFF] ^
               tables[5][(low >> 16) & 0xFF] ^ tables[4][low >> 24] ^ tables[3][at[4]] ^
               tables[2][at[5]] ^ tables[1][at[6]] ^ tables[0][at[7]];
    }
    for (; size; ++at, --size) rest = (rest >> 8) ^ tables[0][(rest ^ *at) & 0xFF];
    return ~rest;
}

}  // namespace quorvi
