#include "QuorviCore/identity/Uuid.h"

#include <array>
#include <random>

namespace quorvi {

namespace {
constexpr char hexDigits[] = "0123456789ABCDEF";
bool isHyphenPosition(std::size_t i) {
    return i == 8 || i == 13 || i == 18 || i == 23;
}
bool isHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
}
}  // namespace

std::string newUuid() {
    thread_local std::random_device entropy;
    std::array<unsigned char, 16> bytes{};
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
        const unsigned word = entropy();
        for (std::size_t k = 0; k < 4; ++k)
            bytes[i + k] = static_cast<unsigned char>(word >> (8 * k));
    }
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
    std::string result;
    result.reserve(36);
    for (unsigned char byte : bytes) {
        if (isHyphenPosition(result.size())) result += '-';
        result += hexDigits[byte >> 4];
        result += hexDigits[byte & 0x0F];
    }
    return result;
}

bool isUuid(const std::string& s) {
    if (s.size() != 36) return false;
    for (std::size_t i = 0; i < s.size(); ++i) {
        if (isHyphenPosition(i) ? s[i] != '-' : !isHexDigit(s[i])) return false;
    }
    return true;
}

}  // namespace quorvi
