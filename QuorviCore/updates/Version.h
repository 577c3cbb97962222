#pragma once

#include <compare>
#include <string_view>

namespace quorvi {

// Orders versions as release feeds do: numbers by value (1.10 after 1.9), trailing zeros ignored
// (1.0 equals 1), letters before everything else (1.0b2 before 1.0, 1.0 before 1.0.1). Ignores a
// leading "v" and build metadata after "+". Accepts any text; never throws.
std::weak_ordering compareVersions(std::string_view a, std::string_view b);

// Whether the text is a version that is safe to show and to use in a file name: only digits, ASCII
// letters and ".", "-", "+", "~", beginning with a letter or digit, at most 64 bytes.
bool isVersion(std::string_view text);

}  // namespace quorvi
