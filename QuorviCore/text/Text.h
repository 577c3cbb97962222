#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Unicode text as the user sees it. Strings are UTF-8; malformed sequences count as U+FFFD. This
// folder is the only place that includes ICU. All functions are pure and thread-safe.
namespace quorvi::text {

// Whether two texts are the same under Unicode canonical equivalence.
bool equal(std::string_view a, std::string_view b);

// Whether the three parts, joined, equal `whole` under canonical equivalence. Cheap if the bytes
// are the same.
bool equalJoined(std::string_view prefix, std::string_view middle, std::string_view suffix,
                 std::string_view whole);

// Normalization Form C.
std::string toNfc(std::string_view s);

// Whether the text is well-formed and in Form C.
bool isNfc(std::string_view s);

// Returns the text with each malformed sequence replaced by U+FFFD.
std::string wellFormed(std::string_view s);

// Number of UTF-16 code units.
std::int64_t utf16Length(std::string_view s);

// Number of user-perceived characters (extended grapheme clusters).
std::size_t characterCount(std::string_view s);

// Whether characterCount() exceeds `limit`; stops counting there.
bool hasMoreCharacters(std::string_view s, std::size_t limit);

// Returns the first `count` user-perceived characters, or the whole text if it has fewer.
std::string_view firstCharacters(std::string_view s, std::size_t count);

// Removes white space (Unicode White_Space) at both ends.
std::string_view trimmed(std::string_view s);

// Whether any code point is Unicode White_Space.
bool containsWhiteSpace(std::string_view s);

// Full upper-casing, independent of the locale.
std::string upperCased(std::string_view s);

// Whether the bytes are well-formed UTF-8.
bool isValidUtf8(std::string_view s);

}  // namespace quorvi::text
