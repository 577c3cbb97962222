#pragma once

#include <string_view>

#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi::text {

// The longest beginning of a text that has at most `limit` bytes and ends at the border of a
// character.
inline std::string_view piece(std::string_view text, std::size_t limit) {
    if (text.size() <= limit) return text;
    auto size = limit;
    while (size > limit - 4 && isContinuation(text[size])) --size;
    return text.substr(0, size);
}

}  // namespace quorvi::text
