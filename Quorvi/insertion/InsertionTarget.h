#pragma once

#include <sys/types.h>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Quorvi/platform/Accessibility.h"
#include "QuorviCore/messages/Message.h"
#include "QuorviCore/text/Utf16Range.h"

namespace quorvi {

// The field that receives the text of a dictation, captured when the dictation starts. What a busy
// application did not tell then may be completed later, see FieldInspector::completed.
struct InsertionTarget {
    pid_t pid = 0;
    std::string appName;                  // the display name, or that of yourApp
    std::uint64_t activeWindow = 0;       // as the display numbers it, see RunningApplication
    std::optional<AXElement> window;      // the application's focused window
    std::optional<AXElement> element;     // the focused text element, if one was found
    std::optional<Utf16Range> selection;  // in the element
    std::uint64_t inputGeneration = 0;    // the keyboard monitor's counter at capture
    bool isNoText = false;                // the focus is on something else than a text, as a button
    bool takesText = false;               // from an input method, and is no password field

    static constexpr std::string_view yourApp = sentences::english(Sentence::yourApp);

    // The application as a sentence names it.
    Message::Argument app() const {
        if (appName == yourApp) return Sentence::yourApp;
        return appName;
    }
};

}  // namespace quorvi
