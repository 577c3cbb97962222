#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// A value of a property list, with every type of its binary format (version 1.0), so that foreign
// files survive a round trip. A plain value.
struct PropertyList {
    using Array = std::vector<PropertyList>;
    using Dictionary = std::map<std::string, PropertyList, std::less<>>;
    struct Null {
        bool operator==(const Null&) const = default;
    };
    struct WideInteger {  // beyond 64 bits, big-endian
        std::array<std::uint8_t, 16> bytes{};
        bool operator==(const WideInteger&) const = default;
    };
    struct Uid {  // reference in a keyed archive
        std::uint64_t value = 0;
        bool operator==(const Uid&) const = default;
    };
    using Value = std::variant<Null, bool, std::int64_t, WideInteger, double, Date, Bytes,
                               std::string, Uid, Array, Dictionary>;

    PropertyList(Value v);
    PropertyList(const PropertyList&);
    PropertyList(PropertyList&&) noexcept;
    PropertyList& operator=(const PropertyList&);
    PropertyList& operator=(PropertyList&&) noexcept;
    ~PropertyList();

    // Strings are UTF-8. A lone UTF-16 surrogate in a file becomes the three bytes that encode its
    // code point.
    Value value;

    // Returns the canonical binary form: equal values have equal bytes. Malformed UTF-8 becomes
    // U+FFFD. Throws std::length_error if values are nested deeper than
    // greatestDepth.
    std::string toBinary() const;

    // Returns nullopt unless the bytes are exactly one well-formed property list. Memory use is
    // proportional to the size of the input.
    static std::optional<PropertyList> fromBinary(std::string_view bytes);

    friend bool operator==(const PropertyList& a, const PropertyList& b);
};

}  // namespace quorvi
