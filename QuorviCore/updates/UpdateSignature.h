#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace quorvi {

// The Ed25519 key that releases are signed with.
using UpdateKey = std::array<std::uint8_t, 32>;

// Nothing unless the text is the strict base64 form of a key.
std::optional<UpdateKey> updateKeyFromBase64(std::string_view text);

// Whether `signature`, in strict base64, is the key's signature of exactly these bytes.
bool isSignedWith(const UpdateKey& key, std::string_view signature,
                  std::span<const std::uint8_t> bytes);

}  // namespace quorvi
