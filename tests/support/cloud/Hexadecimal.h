#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace quorvi::test {

// Any bytes as one word, and back; "-" for none.
inline std::string hexadecimal(std::string_view bytes) {
    std::string text;
    for (const unsigned char byte : bytes) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", byte);
        text += digits;
    }
    return text.empty() ? "-" : text;
}

inline std::string fromHexadecimal(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at + 1 < text.size(); at += 2)
        bytes.push_back(static_cast<char>(std::stoi(std::string(text.substr(at, 2)), nullptr, 16)));
    return bytes;
}

}  // namespace quorvi::test
