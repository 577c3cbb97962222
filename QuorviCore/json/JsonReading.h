#pragma once

#include <rapidjson/document.h>

#include <string_view>

// For .cpp files only: the parser is a detail of theirs.
namespace quorvi::json {

// Reads one JSON value and nothing else. False when the text is not well-formed, its encoding
// included. Hostile nesting costs memory of its own length and no stack.
bool parse(rapidjson::Document& document, std::string_view text);

// The parser lets the later half of a surrogate pair through when it stands alone. False for a
// string that has one; any other malformed UTF-8 must have been looked for in the document.
bool isFreeOfSurrogates(std::string_view s);

}  // namespace quorvi::json
