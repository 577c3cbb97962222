#pragma once

#include <optional>
#include <string>

#include "Quorvi/platform/linux/atspi/AtspiPeers.h"
#include "Quorvi/platform/linux/atspi/AtspiRoles.h"
#include "QuorviCore/text/Utf16Range.h"

namespace quorvi::atspi {

// Reads the text and the selection of an object; ranges are returned in UTF-16 units, whatever the
// toolkit counts. One thread at a time.
//
// An editable region of a web page has its paragraphs as embedded objects. Both readers flatten it
// in the same way, a line per block, so that a range fits the text. Passwords are never read, nor
// terminals, whose text is their whole scrollback.
class AtspiText {
public:
    explicit AtspiText(AtspiPeers& peers) : peers_(peers) {}

    std::optional<std::string> value(const ObjectRef& object, TimePoint deadline);
    std::optional<Utf16Range> selection(const ObjectRef& object, TimePoint deadline);

private:
    enum class Wanted { value, selection };
    struct Facts {
        ObjectRef object;
        Description description;
        std::optional<std::int32_t> count;
        std::optional<std::int32_t> caret;
        std::optional<Span> selected;
    };

    std::optional<Facts> readableFacts(const ObjectRef& object, Wanted wanted, TimePoint deadline);
    std::optional<std::string> textBetween(const ObjectRef& object, std::int32_t start,
                                           std::int32_t end, TimePoint deadline);

    AtspiPeers& peers_;
};

}  // namespace quorvi::atspi
