#include "QuorviCore/json/JsonReading.h"

#include <rapidjson/memorystream.h>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

#include "QuorviCore/text/Text.h"

namespace quorvi::json {

bool parse(rapidjson::Document& document, std::string_view text) {
    // Checking the encoding first is several times faster than the parser's own check.
    if (!text::isValidUtf8(text)) return false;
    constexpr unsigned flags = rapidjson::kParseFullPrecisionFlag | rapidjson::kParseIterativeFlag;
    rapidjson::MemoryStream stream(text.data(), text.size());
    document.ParseStream<flags>(stream);
    return !document.HasParseError();
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
