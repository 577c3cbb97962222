#include "QuorviCore/checksum/Crc32c.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvi {
namespace {

// The definition of the checksum, bit by bit.
std::uint32_t literally(std::string_view bytes) {
    std::uint32_t rest = ~0u;
    for (const char byte : bytes) {
        rest ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) rest = (rest >> 1) ^ (rest & 1 ? 0x82F63B78u : 0);
    }
    return ~rest;
}

TEST(Crc32cTest, IsTheCastagnoliChecksumOfAnyLengthInAnyPieces) {
    EXPECT_EQ(crc32c(""), 0u);
    EXPECT_EQ(crc32c("123456789"), 0xE3069283u);
    EXPECT_EQ(crc32c(std::string(32, '\0')), 0x8A9136AAu);  // RFC 3720, B.4
    std::string bytes;
    for (int i = 0; i < 100; ++i) {
        bytes.push_back(static_cast<char>(i * 37 + 11));
        const std::string_view all = bytes;
        EXPECT_EQ(crc32c(all), literally(all));
        EXPECT_EQ(crc32c(all.substr(all.size() / 3), crc32c(all.substr(0, all.size() / 3))),
                  crc32c(all));
    }
}

}  // namespace
}  // namespace quorvi
