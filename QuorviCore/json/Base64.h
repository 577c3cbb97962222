#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "QuorviCore/base/ColdMemory.h"
#include "QuorviCore/base/SharedString.h"

// Base64 as used in JSON: standard alphabet, padded.
namespace quorvi::json {

constexpr std::size_t base64Size(std::size_t bytes) {
    return (bytes + 2) / 3 * 4;
}

void appendBase64(std::string& out, std::string_view bytes);

// Returns nullopt for anything but padded base64, white space included. With `cold`, the bytes are
// kept there.
std::optional<SharedString> bytesOfBase64(std::string_view text, ColdStrings* cold = nullptr);

}  // namespace quorvi::json
