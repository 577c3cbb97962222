#pragma once

#include <compare>
#include <string_view>

namespace quorvi {

// Orders two versions as release feeds are ordered: numbers by value (1.10 after 1.9), zeros at the
// end without weight (1.0 equals 1), letters before everything that stands at their place (1.0b2
// before 1.0, 1.0 before 1.0.1). A leading "v" and build metadata after "+" don't count. Text of
// any kind has its place in the order, so nothing throws.
std::weak_ordering compareVersions(std::string_view a, std::string_view b);

// Whether the text is a version that may be shown and become part of a file's name: digits, ASCII
// letters and ".", "-", "+", "~" only, beginning with a letter or digit and at most 64 bytes.
bool isVersion(std::string_view text);

}  // namespace quorvi
