#pragma once

#include <sys/types.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/text/Utf16Range.h"

namespace quorvi {

// A reference to an element of an application's interface. Cheap to copy; two references are equal
// if they name the same element. Immutable, usable on any thread.
class AXElement {
public:
    struct Reference {
        virtual ~Reference() = default;
        virtual bool sameAs(const Reference& other) const = 0;
    };

    explicit AXElement(std::shared_ptr<const Reference> reference)
        : reference_(std::move(reference)) {}

    const Reference& reference() const { return *reference_; }
    bool operator==(const AXElement& other) const { return reference_->sameAs(*other.reference_); }

private:
    std::shared_ptr<const Reference> reference_;
};

// The value of an attribute: a truth value, text (UTF-8), a range, an element or a list of them.
using AXValue = std::variant<bool, std::string, Utf16Range, AXElement, std::vector<AXElement>>;

// The desktop's accessibility interface. Queries block for up to their time-out, so they run on a
// background executor, one at a time, and never on the main thread. A query returns nullopt if it
// fails, times out or finds no such attribute; none throws.
//
// Attribute names, with the type of their value:
//   "AXRole"               text: "AXTextField" (one line), "AXTextArea" (many lines), "AXComboBox",
//                          "AXStaticText", "AXButton", "AXImage", "AXWindow", "AXGroup" for
//                          everything else
//   "AXSubrole"            text: "AXSecureTextField" for a password field, absent for others
//   "AXFocused"            truth value
//   "AXValue"              text: the whole content of a text element
//   "AXSelectedTextRange"  range in UTF-16 units; the caret is a range of length 0
//   "AXChildren"           elements, the last 48 at most
//   "AXFocusedUIElement"   element, of an application or the whole system
//   "AXFocusedWindow"      element, of an application
//   "AXManualAccessibility" (set only) true asks an application to offer its interface in full
//   "AXPaste"              (set only) true asks a text element to paste the clipboard at its caret;
//                          some say that they did and paste nothing
class Accessibility {
public:
    virtual ~Accessibility() = default;

    // Returns whether this process may use the interface: the accessibility bus answers and a
    // global input hook can be installed. The last known state; never blocks. Any thread.
    virtual bool isTrusted() const = 0;

    // Asks the desktop to enable accessibility. Returns at once. Main thread.
    virtual void requestTrust() = 0;

    virtual AXElement applicationElement(pid_t pid) = 0;
    virtual AXElement systemWideElement() = 0;

    virtual std::optional<AXValue> attribute(const AXElement& element, std::string_view name,
                                             Duration timeout) = 0;
    virtual bool setAttribute(const AXElement& element, std::string_view name, bool value,
                              Duration timeout) = 0;

    // Returns the process that owns the element.
    virtual std::optional<pid_t> processIdentifier(const AXElement& element) = 0;
};

}  // namespace quorvi
