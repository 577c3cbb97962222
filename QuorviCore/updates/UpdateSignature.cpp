#include "QuorviCore/updates/UpdateSignature.h"

#include <sodium.h>

namespace quorvi {

namespace {

template <std::size_t size>
std::optional<std::array<std::uint8_t, size>> fromBase64(std::string_view text) {
    static const bool ready = sodium_init() >= 0;
    std::array<std::uint8_t, size> bytes{};
    std::size_t count = 0;
    const char* end = nullptr;
    if (!ready || sodium_base642bin(bytes.data(), size, text.data(), text.size(), nullptr, &count,
                                    &end, sodium_base64_VARIANT_ORIGINAL) != 0)
        return std::nullopt;
    if (count != size || end != text.data() + text.size()) return std::nullopt;
    return bytes;
}

}  // namespace

static_assert(std::tuple_size_v<UpdateKey> == crypto_sign_PUBLICKEYBYTES);

std::optional<UpdateKey> updateKeyFromBase64(std::string_view text) {
    return fromBase64<crypto_sign_PUBLICKEYBYTES>(text);
}

bool isSignedWith(const UpdateKey& key, std::string_view signature,
                  std::span<const std::uint8_t> bytes) {
    const auto decoded = fromBase64<crypto_sign_BYTES>(signature);
    return decoded && crypto_sign_verify_detached(decoded->data(), bytes.data(), bytes.size(),
                                                  key.data()) == 0;
}

}  // namespace quorvi
