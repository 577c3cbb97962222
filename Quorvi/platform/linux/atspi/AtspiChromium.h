#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Quorvi/platform/linux/atspi/AtspiVariant.h"

// Corrections of what Chromium's toolkit, and every program built on it, reports. Pure.
namespace quorvi::atspi {

// Removes the line break at the end of an editable text that only keeps its last line open; it
// vanishes with the first character typed there.
void dropPlaceholderBreak(std::string& text);

// Returns the selection in code points; nullopt if it is lost. Chromium converts the ends of a
// selection, already in code points, from UTF-16 once more; an end inside a surrogate pair becomes
// 0..0. `caret`, if not negative, is correct and at one of the ends.
std::optional<Span> selectionFromChromium(Span reported, std::int32_t caret, std::string_view text);

}  // namespace quorvi::atspi
