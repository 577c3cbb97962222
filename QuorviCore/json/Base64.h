#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "QuorviCore/base/SharedString.h"

// Bytes as they are written in JSON: the standard alphabet, padded.
namespace quorvi::json {

constexpr std::size_t base64Size(std::size_t bytes) {
    return (bytes + 2) / 3 * 4;
}

void appendBase64(std::string& out, std::string_view bytes);

// Nothing when there is anything else in the text, white space included, or padding is missing.
std::optional<SharedString> bytesOfBase64(std::string_view text);

}  // namespace quorvi::json
