#include <bit>
#include <stdexcept>

#include "QuorviCore/base/Nesting.h"
#include "QuorviCore/propertylist/BinaryFormat.h"
#include "QuorviCore/propertylist/PropertyList.h"
#include "QuorviCore/text/Utf8Bytes.h"

namespace quorvi {

namespace {

using namespace binaryPropertyList;

// Returns the code point at `i`, and moves `i` past it; U+FFFD for a malformed sequence. Accepts
// encoded surrogates, which represent lone surrogates of a file.
std::uint32_t nextCodePoint(std::string_view s, std::size_t& i) {
    const auto lead = static_cast<std::uint8_t>(s[i++]);
    if (lead < 0x80) return lead;
    const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    constexpr std::uint32_t least[] = {0, 0x80, 0x800, 0x10000};
    std::uint32_t c = lead & (0x3F >> more);
    auto end = i;
    for (int n = 0; n < more; ++n, ++end) {
        if (end == s.size() || !text::isContinuation(s[end])) return 0xFFFD;
        c = c << 6 | (static_cast<std::uint8_t>(s[end]) & 0x3F);
    }
    if (lead < 0xC0 || lead >= 0xF8 || c < least[more] || c > 0x10FFFF) return 0xFFFD;
    i = end;
    return c;
}

std::string toUtf16(std::string_view s) {
    std::string out;
    const auto add = [&out](std::uint32_t unit) {
        out.push_back(static_cast<char>(unit >> 8));
        out.push_back(static_cast<char>(unit));
    };
    for (std::size_t i = 0; i < s.size();) {
        const auto c = nextCodePoint(s, i);
        if (c < 0x10000) {
            add(c);
        } else {
            add(0xD800 + ((c - 0x10000) >> 10));
            add(0xDC00 + ((c - 0x10000) & 0x3FF));
        }
    }
    return out;
}

// Returns the exponent of the smallest of 1, 2, 4 and 8 bytes that hold the number.
int sizeExponent(std::uint64_t value) {
    return value < 0x100 ? 0 : value < 0x10000 ? 1 : value < 0x100000000 ? 2 : 3;
}

class Writer {
public:
    std::string write(const PropertyList& top) {
        add(top, 0);
        referenceSize_ = 1U << sizeExponent(objects_.size());
        std::vector<std::uint64_t> offsets;
        for (const auto& object : objects_) {
            offsets.push_back(out_.size());
            put(object);
        }
        const std::uint64_t table = out_.size();
        const auto offsetSize = 1U << sizeExponent(table);
        for (const auto offset : offsets) number(offset, offsetSize);
        out_.append(6, '\0');
        number(offsetSize, 1);
        number(referenceSize_, 1);
        number(objects_.size(), 8);
        number(0, 8);
        number(table, 8);
        return std::move(out_);
    }

private:
    struct Object {
        const std::string* key = nullptr;
        const PropertyList* value = nullptr;
        std::vector<std::uint64_t> references;
    };

    std::uint64_t add(const PropertyList& value, std::size_t depth) {
        if (depth > greatestDepth) throw std::length_error("values nested too deep");
        const auto index = objects_.size();
        objects_.push_back({.value = &value});
        std::vector<std::uint64_t> references;
        if (const auto* array = std::get_if<PropertyList::Array>(&value.value)) {
            for (const auto& item : *array) references.push_back(add(item, depth + 1));
        } else if (const auto* entries = std::get_if<PropertyList::Dictionary>(&value.value)) {
            for (const auto& [key, item] : *entries) {
                references.push_back(objects_.size());
                objects_.push_back({.key = &key});
            }
            for (const auto& [key, item] : *entries) references.push_back(add(item, depth + 1));
        }
        objects_[index].references = std::move(references);
        return index;
    }

    void byte(int value) { out_.push_back(static_cast<char>(value)); }
    void number(std::uint64_t value, std::size_t size) {
        for (auto left = size; left > 0; --left) byte(static_cast<int>(value >> 8 * (left - 1)));
    }
    void integer(std::uint64_t value) {
        const int exponent = sizeExponent(value);
        byte(kindInteger << 4 | exponent);
        number(value, std::size_t{1} << exponent);
    }
    void marker(int kind, std::uint64_t length) {
        byte(kind << 4 | static_cast<int>(length < lengthFollows ? length : lengthFollows));
        if (length >= lengthFollows) integer(length);
    }
    void references(const std::vector<std::uint64_t>& all) {
        for (const auto one : all) number(one, referenceSize_);
    }

    void put(const Object& object) {
        if (object.key) return put(*object.key);
        const auto& value = object.value->value;
        if (std::holds_alternative<PropertyList::Array>(value)) {
            marker(kindArray, object.references.size());
            references(object.references);
        } else if (std::holds_alternative<PropertyList::Dictionary>(value)) {
            marker(kindDictionary, object.references.size() / 2);
            references(object.references);
        } else {
            std::visit([this](const auto& scalar) { put(scalar); }, value);
        }
    }
    void put(PropertyList::Null) { byte(markerNull); }
    void put(bool value) { byte(value ? markerTrue : markerFalse); }
    void put(std::int64_t value) { integer(static_cast<std::uint64_t>(value)); }
    void put(const PropertyList::WideInteger& value) {
        byte(kindInteger << 4 | 4);
        out_.append(value.bytes.begin(), value.bytes.end());
    }
    void put(double value) {
        byte(kindReal << 4 | 3);
        number(std::bit_cast<std::uint64_t>(value), 8);
    }
    void put(Date value) {
        byte(kindDate << 4 | 3);
        number(std::bit_cast<std::uint64_t>(value.secondsSinceReferenceDate), 8);
    }
    void put(const Bytes& value) {
        marker(kindData, value.size());
        out_.append(value.begin(), value.end());
    }
    void put(const std::string& value) {
        if (text::isAscii(value)) {
            marker(kindAscii, value.size());
            out_ += value;
        } else {
            const auto units = toUtf16(value);
            marker(kindUtf16, units.size() / 2);
            out_ += units;
        }
    }
    void put(PropertyList::Uid uid) {
        const auto size = 1 << sizeExponent(uid.value);
        byte(kindUid << 4 | (size - 1));
        number(uid.value, static_cast<std::size_t>(size));
    }
    void put(const PropertyList::Array&) {}
    void put(const PropertyList::Dictionary&) {}

    std::string out_{magic};
    std::vector<Object> objects_;
    std::size_t referenceSize_ = 1;
};

}  // namespace

std::string PropertyList::toBinary() const {
    return Writer().write(*this);
}

}  // namespace quorvi
