#include <bit>
#include <cmath>
#include <utility>

#include "QuorviCore/base/Nesting.h"
#include "QuorviCore/propertylist/BinaryFormat.h"
#include "QuorviCore/propertylist/PropertyList.h"

namespace quorvi {

namespace {

using namespace binaryPropertyList;

struct Malformed {};

void require(bool condition) {
    if (!condition) throw Malformed{};
}

std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (const char byte : bytes) value = value << 8 | static_cast<std::uint8_t>(byte);
    return value;
}

void appendUtf8(std::string& out, std::uint32_t c) {
    const auto add = [&out](std::uint32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (c < 0x80) {
        add(c);
    } else if (c < 0x800) {
        add(0xC0 | c >> 6);
        add(0x80 | (c & 0x3F));
    } else {
        if (c < 0x10000) {
            add(0xE0 | c >> 12);
        } else {
            add(0xF0 | c >> 18);
            add(0x80 | (c >> 12 & 0x3F));
        }
        add(0x80 | (c >> 6 & 0x3F));
        add(0x80 | (c & 0x3F));
    }
}

std::string fromUtf16(std::string_view bytes) {
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        auto c = static_cast<std::uint32_t>(bigEndian(bytes.substr(i, 2)));
        if (c >= 0xD800 && c < 0xDC00 && i + 4 <= bytes.size()) {
            const auto low = static_cast<std::uint32_t>(bigEndian(bytes.substr(i + 2, 2)));
            if (low >= 0xDC00 && low < 0xE000) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        appendUtf8(out, c);
    }
    return out;
}

// Reads the objects from the top. References may repeat, so the result could be exponentially
// larger than the file, and may be cyclic: a budget for the total size and a depth limit prevent
// both.
class Reader {
public:
    explicit Reader(std::string_view bytes)
        : bytes_(bytes), budget_(baseBudget + budgetForEachByte * bytes.size()) {
        require(bytes.size() >= magic.size() + trailerSize && bytes.starts_with(magic));
        const auto trailer = bytes.substr(bytes.size() - trailerSize);
        offsetSize_ = static_cast<std::uint8_t>(trailer[6]);
        referenceSize_ = static_cast<std::uint8_t>(trailer[7]);
        require(offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8);
        count_ = bigEndian(trailer.substr(8, 8));
        top_ = bigEndian(trailer.substr(16, 8));
        const auto table = bigEndian(trailer.substr(24, 8));
        require(table >= magic.size() && table <= bytes.size() - trailerSize);
        require(count_ <= (bytes.size() - trailerSize - table) / offsetSize_);
        offsets_ = bytes.substr(table, count_ * offsetSize_);
        bytes_ = bytes.substr(0, table);
    }

    PropertyList top() { return object(top_, 0); }

private:
    static constexpr std::size_t baseBudget = 4 << 20;
    static constexpr std::size_t budgetForEachByte = 32;
    static constexpr std::size_t costOfObject = 64;

    void spend(std::size_t cost) {
        require(cost <= budget_);
        budget_ -= cost;
    }

    // Returns the next `size` bytes of the object.
    std::string_view take(std::size_t& at, std::uint64_t size) const {
        require(size <= bytes_.size() - at);
        const auto taken = bytes_.substr(at, size);
        at += size;
        return taken;
    }

    // Returns the length: the low nibble of the marker, or the integer that follows it.
    std::uint64_t length(std::size_t& at, std::uint8_t low) const {
        if (low != lengthFollows) return low;
        const auto marker = static_cast<std::uint8_t>(take(at, 1)[0]);
        require(marker >> 4 == kindInteger && (marker & 15) <= 3);
        return bigEndian(take(at, 1U << (marker & 15)));
    }

    PropertyList object(std::uint64_t index, std::size_t depth) {
        require(index < count_ && depth <= greatestDepth);
        spend(costOfObject);
        const auto offset = bigEndian(offsets_.substr(index * offsetSize_, offsetSize_));
        require(offset >= magic.size() && offset < bytes_.size());
        auto at = static_cast<std::size_t>(offset);
        const auto marker = static_cast<std::uint8_t>(take(at, 1)[0]);
        const std::uint8_t low = marker & 15;
        switch (marker >> 4) {
            case kindSimple:
                return simple(marker);
            case kindInteger:
                return integer(at, low);
            case kindReal:
                return {real(at, low)};
            case kindDate:
                require(low == 3);
                return {Date{real(at, low)}};
            case kindUid:
                require(low < 8);
                return {PropertyList::Uid{bigEndian(take(at, low + 1U))}};
            case kindArray:
                return array(at, length(at, low), depth);
            case kindDictionary:
                return dictionary(at, length(at, low), depth);
            default:
                return sequence(at, marker >> 4, length(at, low));
        }
    }

    static PropertyList simple(std::uint8_t marker) {
        require(marker == markerNull || marker == markerFalse || marker == markerTrue);
        if (marker == markerNull) return {PropertyList::Null{}};
        return {marker == markerTrue};
    }

    // One, two and four bytes are unsigned, eight and sixteen signed.
    PropertyList integer(std::size_t& at, std::uint8_t low) const {
        require(low <= 4);
        const auto bytes = take(at, 1U << low);
        if (low < 4) return {static_cast<std::int64_t>(bigEndian(bytes))};
        const auto high = static_cast<std::int64_t>(bigEndian(bytes.substr(0, 8)));
        const auto value = static_cast<std::int64_t>(bigEndian(bytes.substr(8)));
        if (high == (value < 0 ? -1 : 0)) return {value};
        PropertyList::WideInteger wide;
        for (std::size_t i = 0; i < 16; ++i) wide.bytes[i] = static_cast<std::uint8_t>(bytes[i]);
        return {wide};
    }

    double real(std::size_t& at, std::uint8_t low) const {
        require(low == 2 || low == 3);
        if (low == 3) return std::bit_cast<double>(bigEndian(take(at, 8)));
        return std::bit_cast<float>(static_cast<std::uint32_t>(bigEndian(take(at, 4))));
    }

    PropertyList sequence(std::size_t& at, int kind, std::uint64_t size) {
        require(kind == kindData || kind == kindAscii || kind == kindUtf16);
        const std::uint64_t unit = kind == kindUtf16 ? 2 : 1;
        require(size <= bytes_.size() / unit);
        const auto bytes = take(at, size * unit);
        spend(bytes.size() * unit);
        if (kind == kindData) return {Bytes(bytes.begin(), bytes.end())};
        if (kind == kindUtf16) return {fromUtf16(bytes)};
        for (const char c : bytes) require(static_cast<std::uint8_t>(c) < 0x80);
        return {std::string(bytes)};
    }

    std::uint64_t reference(std::size_t& at) const { return bigEndian(take(at, referenceSize_)); }

    PropertyList array(std::size_t at, std::uint64_t size, std::size_t depth) {
        PropertyList::Array result;
        for (; size > 0; --size) result.push_back(object(reference(at), depth + 1));
        return {std::move(result)};
    }

    PropertyList dictionary(std::size_t at, std::uint64_t size, std::size_t depth) {
        require(size <= bytes_.size() / referenceSize_);
        auto keys = at;
        take(at, size * referenceSize_);
        PropertyList::Dictionary result;
        for (; size > 0; --size) {
            auto key = object(reference(keys), depth + 1);
            auto* name = std::get_if<std::string>(&key.value);
            require(name != nullptr);
            auto value = object(reference(at), depth + 1);
            require(result.emplace(std::move(*name), std::move(value)).second);
        }
        return {std::move(result)};
    }

    std::string_view bytes_;    // up to the table of offsets
    std::string_view offsets_;  // the table
    std::uint8_t offsetSize_ = 0;
    std::uint8_t referenceSize_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t top_ = 0;
    std::size_t budget_;
};

}  // namespace

std::optional<PropertyList> PropertyList::fromBinary(std::string_view bytes) {
    try {
        return Reader(bytes).top();
    } catch (const Malformed&) {
        return std::nullopt;
    }
}

}  // namespace quorvi
