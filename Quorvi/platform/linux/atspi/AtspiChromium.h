#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Quorvi/platform/linux/atspi/AtspiVariant.h"

// What Chromium's toolkit, and so every program built on it, reports differently. Pure.
namespace quorvi::atspi {

// An editable text ends with a line break that only holds its last line open; it goes with the
// first character typed there.
void dropPlaceholderBreak(std::string& text);

// The selection in code points. Chromium converts the ends of a selection, which are in code points
// already, from UTF-16 once more; an end that falls inside a surrogate pair that way comes out as
// 0..0 and is lost. `caret`, at one of the ends where it is not negative, is always right.
std::optional<Span> selectionFromChromium(Span reported, std::int32_t caret, std::string_view text);

}  // namespace quorvi::atspi
