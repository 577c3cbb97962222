#pragma once

#include <charconv>
#include <concepts>
#include <string>
#include <string_view>

// Writes canonical JSON: sorted keys and no white space, so that equal values have equal bytes.
namespace quorvi::json {

// Appends the quoted text; malformed UTF-8 becomes U+FFFD.
void appendString(std::string& out, std::string_view text);

// Appends the shortest digits that read back as the same number, which must be finite.
template <class Number>
    requires(std::integral<Number> || std::floating_point<Number>)
void appendNumber(std::string& out, Number value) {
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    out.append(digits, end);
}

inline void appendBoolean(std::string& out, bool value) {
    out += value ? "true" : "false";
}

}  // namespace quorvi::json
