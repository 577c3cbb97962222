#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvi {

// A universally unique identifier. Its textual form has 36 characters: upper-case hexadecimal
// digits with hyphens.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    // A new random one (version 4). Thread-safe.
    static Uuid random();
    // Parses the textual form, digits in either case; returns nullopt for anything else.
    static std::optional<Uuid> parse(std::string_view text);

    std::string string() const;
    // The textual form without an allocation.
    std::array<char, 36> characters() const;

    auto operator<=>(const Uuid&) const = default;
};

// Returns the textual form of a new random UUID. Thread-safe.
std::string newUuid();

// Whether the text is the upper-case textual form of a UUID.
bool isUuid(const std::string& s);

}  // namespace quorvi
