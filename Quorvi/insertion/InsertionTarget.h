#pragma once

#include <sys/types.h>
#include <cstdint>
#include <optional>
#include <string>

#include "Quorvi/platform/Accessibility.h"
#include "QuorviCore/text/Utf16Range.h"

namespace quorvi {

// Where the text of a dictation is to go, as captured when it started. Immutable afterwards.
struct InsertionTarget {
    pid_t pid = 0;
    std::string appName;                  // for messages: the display name, or "your app"
    std::optional<AXElement> window;      // the application's focused window
    std::optional<AXElement> element;     // the focused text element, if one was found
    std::optional<Utf16Range> selection;  // in the element
    std::uint64_t inputGeneration = 0;    // the keyboard monitor's counter at capture
};

}  // namespace quorvi
