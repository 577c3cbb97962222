#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Quorvi/insertion/InsertionTarget.h"
#include "Quorvi/platform/Workspace.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Finds the focused text field through the accessibility interface, and says later whether it is
// still the same and what it holds. Every operation may block for the time-outs of its queries, so
// it is run on a background executor, one at a time. Holds no state.
class FieldInspector {
public:
    FieldInspector(Scheduler& clock, Accessibility& accessibility, const Workspace& workspace)
        : clock_(clock), accessibility_(accessibility), workspace_(workspace) {}

    // The destination that has the focus now. Throws QuorviError with the sentence to show.
    InsertionTarget capture(std::uint64_t inputGeneration) const;

    // Throws QuorviError unless the target still has the focus, with its caret where it was, and
    // nothing was typed or clicked since.
    void validate(const InsertionTarget& target, std::uint64_t currentInputGeneration) const;

    // The text of the target's field, nothing when it can't or mustn't be read. Fields over 100,000
    // UTF-16 code units are not read.
    std::optional<std::string> correctionField(const InsertionTarget& target,
                                               bool requireFocus) const;

private:
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
