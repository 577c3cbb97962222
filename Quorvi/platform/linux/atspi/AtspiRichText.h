#pragma once

#include <optional>
#include <string>

#include "Quorvi/platform/linux/atspi/AtspiPeers.h"
#include "QuorviCore/text/Utf16Range.h"

namespace quorvi::atspi {

// The text of an object with all that is embedded in it, as the user sees it: a block stands on a
// line of its own, a link runs on, and what has no text, such as a picture, stays U+FFFC. The
// selection, or the caret, is that of the same text.
struct RichText {
    std::string text;
    std::optional<Utf16Range> selection;
};

// Nothing when the objects do not fit the text, are too many, or do not answer in time.
std::optional<RichText> readRichText(AtspiPeers& peers, const ObjectRef& object,
                                     TimePoint deadline);

}  // namespace quorvi::atspi
