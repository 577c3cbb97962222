#include "QuorviCore/identity/Uuid.h"

#include <random>

namespace quorvi {

namespace {

constexpr char hexDigits[] = "0123456789ABCDEF";

constexpr bool isHyphenPosition(std::size_t i) {
    return i == 8 || i == 13 || i == 18 || i == 23;
}

// The digit's value, or -1.
constexpr int valueOf(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

}  // namespace

Uuid Uuid::random() {
    thread_local std::random_device entropy;
    Uuid result;
    auto& bytes = result.bytes;
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
        const unsigned word = entropy();
        for (std::size_t k = 0; k < 4; ++k)
            bytes[i + k] = static_cast<unsigned char>(word >> (8 * k));
    }
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
    return result;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != 36) return std::nullopt;
    Uuid result;
    std::size_t digits = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isHyphenPosition(i)) {
            if (text[i] != '-') return std::nullopt;
            continue;
        }
        const int value = valueOf(text[i]);
        if (value < 0) return std::nullopt;
        auto& byte = result.bytes[digits++ / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | value);
    }
    return result;
}

std::array<char, 36> Uuid::characters() const {
    std::array<char, 36> result;
    std::size_t at = 0;
    for (const auto byte : bytes) {
        if (isHyphenPosition(at)) result[at++] = '-';
        result[at++] = hexDigits[byte >> 4];
        result[at++] = hexDigits[byte & 0x0F];
    }
    return result;
}

std::string Uuid::string() const {
    const auto text = characters();
    return {text.begin(), text.end()};
}

std::string newUuid() {
    return Uuid::random().string();
}

bool isUuid(const std::string& s) {
    const auto id = Uuid::parse(s);
    return id && id->string() == s;
}

}  // namespace quorvi
