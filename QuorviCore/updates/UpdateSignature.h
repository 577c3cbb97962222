#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace quorvi {

// The Ed25519 key that releases are signed with.
using UpdateKey = std::array<std::uint8_t, 32>;

// Returns nullopt unless the text is a key in strict base64.
std::optional<UpdateKey> updateKeyFromBase64(std::string_view text);

// Whether `signature`, in strict base64, is a valid signature of the bytes by the key.
bool isSignedWith(const UpdateKey& key, std::string_view signature,
                  std::span<const std::uint8_t> bytes);

}  // namespace quorvi
