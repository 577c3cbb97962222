#include "QuorviCore/json/Base64.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>

namespace quorvi::json {

namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Two characters for twelve bits.
struct Pair {
    char characters[2];
};
constexpr std::array<Pair, 4096> pairs = [] {
    std::array<Pair, 4096> table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = {{alphabet[i >> 6], alphabet[i & 63]}};
    return table;
}();

constexpr std::uint32_t invalid = 0x8000'0000U;

// The bits of a character at each of the four places of a group.
constexpr auto values = [] {
    std::array<std::array<std::uint32_t, 256>, 4> table{};
    for (auto& place : table) place.fill(invalid);
    for (std::uint32_t i = 0; i < alphabet.size(); ++i)
        for (std::uint32_t place = 0; place < 4; ++place)
            table[place][static_cast<unsigned char>(alphabet[i])] = i << (18 - 6 * place);
    return table;
}();

std::uint32_t group(const char* at) {
    const auto character = [at](int i) { return static_cast<unsigned char>(at[i]); };
    return values[0][character(0)] | values[1][character(1)] | values[2][character(2)] |
           values[3][character(3)];
}

// Writes the bytes of `text`, whose size is a multiple of four and that has no padding.
bool decode(std::string_view text, char* out) {
    std::uint32_t seen = 0;
    for (std::size_t i = 0; i < text.size(); i += 4, out += 3) {
        const auto bits = group(text.data() + i);
        seen |= bits;
        out[0] = static_cast<char>(bits >> 16);
        out[1] = static_cast<char>(bits >> 8);
        out[2] = static_cast<char>(bits);
    }
    return (seen & invalid) == 0;
}

}  // namespace

void appendBase64(std::string& out, std::string_view bytes) {
    const auto begin = out.size();
    out.resize(begin + base64Size(bytes.size()));
    char* at = out.data() + begin;
    const auto* in = reinterpret_cast<const unsigned char*>(bytes.data());
    std::size_t left = bytes.size();
    const auto put = [&at](std::uint32_t bits) {
        std::memcpy(at, pairs[bits >> 12].characters, 2);
        std::memcpy(at + 2, pairs[bits & 0xFFF].characters, 2);
        at += 4;
    };
    for (; left >= 3; left -= 3, in += 3)
        put(std::uint32_t{in[0]} << 16 | std::uint32_t{in[1]} << 8 | in[2]);
    if (left == 0) return;
    put(std::uint32_t{in[0]} << 16 | (left == 2 ? std::uint32_t{in[1]} << 8 : 0U));
    at[-1] = '=';
    if (left == 1) at[-2] = '=';
}

std::optional<SharedString> bytesOfBase64(std::string_view text, ColdStrings* cold) {
    if (text.size() % 4 != 0) return std::nullopt;
    if (text.empty()) return SharedString();
    // Most values are small, and need no memory but their own.
    std::array<char, 4096> little;
    std::unique_ptr<char[]> large;
    const std::size_t room = text.size() / 4 * 3;
    if (room > little.size()) large = std::make_unique_for_overwrite<char[]>(room);
    char* out = large ? large.get() : little.data();

    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    const auto whole = text.substr(0, padding == 0 ? text.size() : text.size() - 4);
    if (!decode(whole, out)) return std::nullopt;
    if (padding != 0) {
        char last[4] = {'A', 'A', 'A', 'A'};
        std::memcpy(last, text.data() + whole.size(), 4 - padding);
        if (!decode({last, 4}, out + whole.size() / 4 * 3)) return std::nullopt;
    }
    const std::string_view bytes(out, room - padding);
    return cold ? cold->keep(bytes) : SharedString(bytes);
}

}  // namespace quorvi::json
