#include "QuorviCore/checksum/Crc32c.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvi {
namespace {

TEST(Crc32c, IsTheCastagnoliChecksumInPiecesOfAnySize) {
    EXPECT_EQ(crc32c("123456789"), 0xE3069283u);
    EXPECT_EQ(crc32c(std::string(32, '\0')), 0x8A9136AAu);  // RFC 3720, B.4
    std::string bytes;
    std::uint32_t oneByOne = 0;
    for (int i = 0; i < 100; ++i) {
        bytes.push_back(static_cast<char>(i * 37 + 11));
        oneByOne = crc32c(std::string_view(bytes).substr(bytes.size() - 1), oneByOne);
        EXPECT_EQ(crc32c(bytes), oneByOne);
    }
}

}  // namespace
}  // namespace quorvi
