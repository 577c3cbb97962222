#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "QuorviCore/base/SharedString.h"

// Base64 as used in JSON: standard alphabet, padded.
namespace quorvi::json {

constexpr std::size_t base64Size(std::size_t bytes) {
    return (bytes + 2) / 3 * 4;
}

void appendBase64(std::string& out, std::string_view bytes);

// Returns nullopt for anything but padded base64, white space included.
std::optional<SharedString> bytesOfBase64(std::string_view text);

}  // namespace quorvi::json
