#pragma once

#include <optional>
#include <string>

#include "Quorvi/platform/linux/atspi/AtspiPeers.h"
#include "QuorviCore/text/Utf16Range.h"

namespace quorvi::atspi {

// The text of an object and its embedded objects, as the user sees it: a block on a line of its
// own, a link within the line, U+FFFC for an object without text, such as a picture. The selection,
// or the caret, refers to this text.
struct RichText {
    std::string text;
    std::optional<Utf16Range> selection;
};

// Returns nullopt if the objects do not match the text, are too many, or do not answer in time.
std::optional<RichText> readRichText(AtspiPeers& peers, const ObjectRef& object,
                                     TimePoint deadline);

// A browser writes a space that is typed at the end of a line, or beside another space, as a
// no-break space, and changes its mind when more is typed. Makes ordinary spaces of those; one that
// stands between words is the writer's own and stays.
void restoreTypedSpaces(std::string& text);

}  // namespace quorvi::atspi
