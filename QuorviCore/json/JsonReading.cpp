#include "QuorviCore/json/JsonReading.h"

#include <rapidjson/memorystream.h>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

#include "QuorviCore/base/Nesting.h"
#include "QuorviCore/text/Text.h"

namespace quorvi::json {

namespace {

// Between the parser and the document: bounds the nesting, and converts the numbers itself, since
// the parser's full precision is undefined for some, such as 0E56.
class BoundedHandler {
public:
    explicit BoundedHandler(rapidjson::Document& document) : document_(document) {}

    bool Null() { return document_.Null(); }
    bool Bool(bool value) { return document_.Bool(value); }
    bool RawNumber(const char* s, rapidjson::SizeType size, bool) {
        const std::string_view digits(s, size);
        if (const auto number = exactly<std::int64_t>(digits)) return document_.Int64(*number);
        if (const auto number = exactly<std::uint64_t>(digits)) return document_.Uint64(*number);
        const auto number = doubleOf(digits);
        return number && document_.Double(*number);
    }
    bool String(const char* s, rapidjson::SizeType size, bool copy) {
        return isFreeOfSurrogates({s, size}) && document_.String(s, size, copy);
    }
    bool Key(const char* s, rapidjson::SizeType size, bool copy) {
        return isFreeOfSurrogates({s, size}) && document_.Key(s, size, copy);
    }
    bool StartObject() { return ++depth_ <= greatestDepth && document_.StartObject(); }
    bool StartArray() { return ++depth_ <= greatestDepth && document_.StartArray(); }
    bool EndObject(rapidjson::SizeType count) {
        --depth_;
        return document_.EndObject(count);
    }
    bool EndArray(rapidjson::SizeType count) {
        --depth_;
        return document_.EndArray(count);
    }
    // Never sent, since numbers are passed on as they are written.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

private:
    template <class Number>
    static std::optional<Number> exactly(std::string_view digits) {
        Number number{};
        const char* last = digits.data() + digits.size();
        const auto [end, error] = std::from_chars(digits.data(), last, number);
        return error == std::errc() && end == last ? std::optional(number) : std::nullopt;
    }

    rapidjson::Document& document_;
    std::size_t depth_ = 0;
};

}  // namespace

bool parse(rapidjson::Document& document, std::string_view text) {
    // Checking the encoding first is several times faster than the parser's own check.
    if (!text::isValidUtf8(text)) return false;
    bool isRead = false;
    const auto generate = [&](rapidjson::Document& target) {
        rapidjson::MemoryStream stream(text.data(), text.size());
        rapidjson::Reader parser;
        BoundedHandler handler(target);
        isRead = !parser.Parse<rapidjson::kParseNumbersAsStringsFlag>(stream, handler).IsError();
        return isRead;
    };
    document.Populate(generate);
    return isRead;
}

bool isFreeOfSurrogates(std::string_view s) {
    for (std::size_t at = s.find('\xED'); at != s.npos; at = s.find('\xED', at + 1))
        if (at + 1 < s.size() && static_cast<unsigned char>(s[at + 1]) >= 0xA0) return false;
    return true;
}

std::optional<double> doubleOf(std::string_view digits) {
    double value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    // from_chars reports overflow and underflow alike; strtod tells them apart.
    if (error == std::errc::result_out_of_range)
        value = std::strtod(std::string(digits).c_str(), nullptr);
    else if (error != std::errc())
        return std::nullopt;
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<std::int64_t> integerOf(std::string_view digits) {
    std::int64_t value = 0;
    const char* last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, value);
    if (end == last) return error == std::errc() ? std::optional(value) : std::nullopt;
    const auto number = doubleOf(digits);
    constexpr double limit = 9223372036854775808.0;  // 2 to the power of 63
    if (!number || *number != std::trunc(*number) || *number < -limit || *number >= limit)
        return std::nullopt;
    return static_cast<std::int64_t>(*number);
}

}  // namespace quorvi::json
