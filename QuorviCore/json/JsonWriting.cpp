#include "QuorviCore/json/JsonWriting.h"

#include <cstdint>

#include "QuorviCore/text/Text.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi::json {

namespace {

// A bit pattern with the top bit of each byte set that is below 0x20, a quotation mark or a
// backslash; bits above the lowest such byte may be set wrongly.
std::uint64_t bytesToEscape(std::uint64_t bytes) {
    constexpr std::uint64_t ones = 0x0101010101010101U;
    constexpr std::uint64_t tops = 0x8080808080808080U;
    const std::uint64_t quotes = bytes ^ (ones * '"');
    const std::uint64_t backslashes = bytes ^ (ones * '\\');
    return (((bytes - ones * 0x20) & ~bytes) | ((quotes - ones) & ~quotes) |
            ((backslashes - ones) & ~backslashes)) &
           tops;
}

bool needsEscape(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
}

// Number of leading bytes that stand for themselves.
std::size_t plainPrefix(std::string_view s) {
    std::size_t i = 0;
    while (i + 8 <= s.size() && bytesToEscape(text::eightBytes(s.data() + i)) == 0) i += 8;
    while (i < s.size() && !needsEscape(s[i])) ++i;
    return i;
}

void appendEscape(std::string& out, char c) {
    switch (c) {
        case '"':
            out += "\\\"";
            return;
        case '\\':
            out += "\\\\";
            return;
        case '\n':
            out += "\\n";
            return;
        case '\r':
            out += "\\r";
            return;
        case '\t':
            out += "\\t";
            return;
        default:
            break;
    }
    constexpr char digits[] = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(c);
    out += "\\u00";
    out += digits[value >> 4];
    out += digits[value & 0x0F];
}

}  // namespace

void appendString(std::string& out, std::string_view s) {
    if (!text::isValidUtf8(s)) return appendString(out, text::wellFormed(s));
    out += '"';
    for (;;) {
        const std::size_t plain = plainPrefix(s);
        out += s.substr(0, plain);
        if (plain == s.size()) break;
        appendEscape(out, s[plain]);
        s.remove_prefix(plain + 1);
    }
    out += '"';
}

}  // namespace quorvi::json
