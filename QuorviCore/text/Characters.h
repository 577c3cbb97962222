#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

// Positions between the user-perceived characters of a UTF-8 text, as byte offsets, and what kind
// of character stands there. Pure and thread-safe; the cost is local to the position.
namespace quorvi::text {

// The byte offset behind the first `units` UTF-16 code units; nothing when the text is shorter or
// the position is inside a surrogate pair.
std::optional<std::size_t> offsetOfUtf16(std::string_view s, std::int64_t units);

// Whether a character begins or the text ends at the offset.
bool isCharacterBoundary(std::string_view s, std::size_t offset);

// The beginning of the character before the offset, and the end of the one behind it. The offset
// is a boundary, not at the start or at the end respectively.
std::size_t previousCharacter(std::string_view s, std::size_t offset);
std::size_t nextCharacter(std::string_view s, std::size_t offset);

// The length in bytes of the leading (trailing) characters that two texts in Form C share. The
// shared end leaves the first `reserved` bytes, a boundary in both texts, out of account.
std::size_t sharedStart(std::string_view a, std::string_view b);
std::size_t sharedEnd(std::string_view a, std::string_view b, std::size_t reserved);

// Whether the character at the offset is a letter or a number: its first code point decides. The
// underscore is a word character too.
bool isLetterOrNumber(std::string_view s, std::size_t offset);
bool isWordCharacter(std::string_view s, std::size_t offset);

bool containsLetter(std::string_view s);
bool containsLineBreak(std::string_view s);

}  // namespace quorvi::text
