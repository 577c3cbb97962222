#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

// Fast paths for UTF-8: most text is ASCII, and texts that are compared are mostly equal bytes.
// They process eight bytes at once.
namespace quorvi::text {

inline std::uint64_t eightBytes(const char* p) {
    std::uint64_t value;
    std::memcpy(&value, p, sizeof value);
    return value;
}

// Number of leading bytes that are ASCII.
inline std::size_t asciiPrefix(std::string_view s) {
    std::size_t i = 0;
    while (i + 8 <= s.size() && (eightBytes(s.data() + i) & 0x8080808080808080U) == 0) i += 8;
    while (i < s.size() && static_cast<unsigned char>(s[i]) < 0x80) ++i;
    return i;
}

inline bool isAscii(std::string_view s) {
    return asciiPrefix(s) == s.size();
}

inline bool isAsciiSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

inline char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

// Whether the byte continues a UTF-8 sequence. Cutting before any other byte is safe, even in
// malformed text.
inline bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// Whether a well-formed two-byte sequence starts here, such as a Greek or Cyrillic letter.
inline bool isPairOfBytes(std::string_view s, std::size_t i) {
    const auto lead = static_cast<unsigned char>(s[i]);
    return lead >= 0xC2 && lead <= 0xDF && i + 1 < s.size() && isContinuation(s[i + 1]);
}

// Number of bytes that two texts share at the start, or at the end within the last `limit`.
inline std::size_t sharedLeadingBytes(std::string_view a, std::string_view b) {
    const std::size_t limit = std::min(a.size(), b.size());
    std::size_t i = 0;
    while (i + 8 <= limit && eightBytes(a.data() + i) == eightBytes(b.data() + i)) i += 8;
    while (i < limit && a[i] == b[i]) ++i;
    return i;
}

inline std::size_t sharedTrailingBytes(std::string_view a, std::string_view b, std::size_t limit) {
    const char* endA = a.data() + a.size();
    const char* endB = b.data() + b.size();
    std::size_t n = 0;
    while (n + 8 <= limit && eightBytes(endA - n - 8) == eightBytes(endB - n - 8)) n += 8;
    while (n < limit && a[a.size() - n - 1] == b[b.size() - n - 1]) ++n;
    return n;
}

}  // namespace quorvi::text
