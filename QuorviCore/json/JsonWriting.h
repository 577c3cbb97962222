#pragma once

#include <charconv>
#include <concepts>
#include <string>
#include <string_view>

// Pieces of canonical JSON, which has its keys sorted and no white space, so that equal values give
// equal bytes.
namespace quorvi::json {

// The text in quotation marks; malformed UTF-8 becomes U+FFFD.
void appendString(std::string& out, std::string_view text);

// The shortest digits that read back as the same number, which must be finite.
template <class Number>
requires(std::integral<Number> || std::floating_point<Number>) void appendNumber(std::string& out,
                                                                                 Number value) {
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    out.append(digits, end);
}

inline void appendBoolean(std::string& out, bool value) {
    out += value ? "true" : "false";
}

}  // namespace quorvi::json
