#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// A value of a property list, with every type that its binary format (version 1.0) has, so that a
// file of somebody else's passes through unchanged in meaning. A plain value.
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
    struct Uid {  // a reference of a keyed archive
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

    // A string is UTF-8. A lone UTF-16 surrogate of a file, which no UTF-8 can hold, is kept as the
    // three bytes that its code point would have.
    Value value;

    static constexpr int maximalDepth = 100;

    // The canonical binary form: equal values give equal bytes. Malformed UTF-8 is written as
    // U+FFFD. Throws std::length_error for values that are nested deeper than maximalDepth.
    std::string toBinary() const;

    // Nothing when the bytes are anything else than one whole, well-formed property list. Takes
    // memory in proportion to the bytes, whatever they say.
    static std::optional<PropertyList> fromBinary(std::string_view bytes);

    friend bool operator==(const PropertyList& a, const PropertyList& b);
};

}  // namespace quorvi
