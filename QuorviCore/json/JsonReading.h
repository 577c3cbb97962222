#pragma once

#if defined(__SSE2__) && !defined(RAPIDJSON_SSE2)
#define RAPIDJSON_SSE2  // lets the parser pass over strings sixteen bytes at a time
#endif
#include <rapidjson/document.h>

#include <cstdint>
#include <optional>
#include <string_view>

// For .cpp files only: the parser is a detail of theirs.
namespace quorvi::json {

// Reads one JSON value and nothing else. Returns false if the text is malformed, its encoding and
// lone surrogates included, if it is nested deeper than `greatestDepth`, or if a number overflows.
bool parse(rapidjson::Document& document, std::string_view text);

// Returns false if the string contains an encoded surrogate: the parser accepts a low surrogate
// that stands alone. Other malformed UTF-8 is not looked for; check the whole document first.
bool isFreeOfSurrogates(std::string_view s);

// The value of a JSON number as a double; nullopt if it overflows. Underflow is accepted.
std::optional<double> doubleOf(std::string_view digits);

// The value of a JSON number that is whole, in any notation ("17", "17.0", "1.7e1"); nullopt if it
// has a fraction or is out of range.
std::optional<std::int64_t> integerOf(std::string_view digits);

}  // namespace quorvi::json
