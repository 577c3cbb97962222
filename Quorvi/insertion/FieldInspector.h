#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Quorvi/insertion/InsertionTarget.h"
#include "Quorvi/platform/Workspace.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Finds the focused text field through the accessibility interface; checks later whether it is
// still the same, and reads it. Operations block for up to the time-outs of their queries, so they
// run on a background executor, one at a time. Stateless and cheap to copy; the ports outlive it.
class FieldInspector {
public:
    FieldInspector(Scheduler& clock, Accessibility& accessibility, const Workspace& workspace)
        : clock_(clock), accessibility_(accessibility), workspace_(workspace) {}

    // Returns the focused field or application. Throws QuorviError with the sentence to show if
    // there is none to dictate into.
    InsertionTarget capture(std::uint64_t inputGeneration) const;

    // Throws QuorviError unless the target still has the focus and its caret is where it was, and
    // the user has not typed or clicked since.
    void validate(const InsertionTarget& target, std::uint64_t currentInputGeneration) const;

    // Returns the target with the field and the selection that its application, busy at the
    // capture, did not tell; holds only if the user has neither typed nor clicked since. Throws
    // QuorviError if it is a password field.
    InsertionTarget completed(InsertionTarget target) const;

    // Returns the text of the target's field, or nullopt if it can't or must not be read, or has
    // more than 100,000 UTF-16 code units.
    std::optional<std::string> correctionField(const InsertionTarget& target,
                                               bool requireFocus) const;

private:
    // Where the application has its focus: a text field, something known to be none, or unknown.
    struct Focus {
        std::optional<AXElement> field;
        bool isNoText = false;
    };
    Focus focus(pid_t pid) const;
    std::optional<AXElement> focusedElement(pid_t pid) const;
    std::optional<AXElement> focusedTextElement(const AXElement& start) const;
    std::optional<AXElement> focusedWindow(pid_t pid) const;
    std::optional<Utf16Range> selection(const AXElement& element, Duration timeout) const;
    std::optional<std::string> role(const AXElement& element, Duration timeout) const;
    bool isSecure(const AXElement& element, Duration timeout) const;
    bool hasFocus(const InsertionTarget& target) const;

    Scheduler& clock_;
    Accessibility& accessibility_;
    const Workspace& workspace_;
};

}  // namespace quorvi
