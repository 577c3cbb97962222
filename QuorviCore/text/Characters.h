#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

// Positions between user-perceived characters of a UTF-8 text, as byte offsets, and the class of
// the character there. Pure and thread-safe; the cost does not depend on the length of the text.
namespace quorvi::text {

// Returns the byte offset after the first `units` UTF-16 code units; nullopt if the text is shorter
// or the position is inside a surrogate pair.
std::optional<std::size_t> offsetOfUtf16(std::string_view s, std::int64_t units);

// Whether the offset is the start of a character or the end of the text.
bool isCharacterBoundary(std::string_view s, std::size_t offset);

// Returns the start of the character before the offset, or the end of the one after it. The offset
// is a boundary, and not at the start or the end of the text respectively.
std::size_t previousCharacter(std::string_view s, std::size_t offset);
std::size_t nextCharacter(std::string_view s, std::size_t offset);

// Returns the length in bytes of the leading or trailing characters that two texts in Form C share.
// The shared end does not reach into the first `reserved` bytes, which end at a boundary in both
// texts.
std::size_t sharedStart(std::string_view a, std::string_view b);
std::size_t sharedEnd(std::string_view a, std::string_view b, std::size_t reserved);

// Classify the character at the offset by its first code point. The underscore counts as a word
// character.
bool isLetterOrNumber(std::string_view s, std::size_t offset);
bool isWordCharacter(std::string_view s, std::size_t offset);

bool containsLetter(std::string_view s);
bool containsLineBreak(std::string_view s);

}  // namespace quorvi::text
