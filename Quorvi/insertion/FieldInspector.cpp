#include "Quorvi/insertion/FieldInspector.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "QuorviCore/Error.h"
#include "QuorviCore/corrections/CorrectionContext.h"
#include "QuorviCore/text/Text.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr Duration applicationTimeout = 250ms;
constexpr Duration fieldTimeout = 150ms;
constexpr Duration searchTimeout = 50ms;
constexpr Duration searchLimit = 150ms;
constexpr std::size_t searchedElements = 64;
constexpr std::size_t searchedDepth = 11;
constexpr std::size_t searchedChildren = 48;

bool isTextRole(const std::optional<std::string>& role) {
    static constexpr std::array<std::string_view, 3> roles{"AXTextField", "AXTextArea",
                                                           "AXComboBox"};
    return role && std::ranges::find(roles, *role) != roles.end();
}

bool isLeafRole(const std::optional<std::string>& role) {
    static constexpr std::array<std::string_view, 3> roles{"AXStaticText", "AXButton", "AXImage"};
    return role && std::ranges::find(roles, *role) != roles.end();
}

template <class T>
std::optional<T> valueAs(std::optional<AXValue> value) {
    if (!value) return std::nullopt;
    if (auto* typed = std::get_if<T>(&*value)) return std::move(*typed);
    return std::nullopt;
}

// An application that is busy with its window, e.g. since the shortcut took the keyboard, is asked
// twice.
template <class Query>
auto askedTwice(Query query) {
    auto answer = query();
    return answer ? answer : query();
}

[[noreturn]] void refuse(Message sentence) {
    throw QuorviError::message(std::move(sentence));
}

}  // namespace

InsertionTarget FieldInspector::capture(std::uint64_t inputGeneration) const {
    if (!accessibility_.isTrusted()) refuse(say::insertionNeedsAccessibility());
    const auto frontmost = workspace_.frontmostApplication();
    if (!frontmost) refuse(say::clickFieldFirst());

    const auto application = accessibility_.applicationElement(frontmost->pid);
    accessibility_.setAttribute(application, "AXManualAccessibility", true, applicationTimeout);

    auto [element, isNoText] = focus(frontmost->pid);
    if (!element && frontmost->pid == workspace_.ownPid()) refuse(say::clickFieldInWritingApp());

    auto window = focusedWindow(frontmost->pid);
    std::optional<Utf16Range> selected;
    if (element) selected = askedTwice([&] { return selection(*element, applicationTimeout); });
    return {.pid = frontmost->pid,
            .appName =
                frontmost->name.empty() ? std::string(InsertionTarget::yourApp) : frontmost->name,
            .activeWindow = frontmost->window,
            .window = std::move(window),
            .element = std::move(element),
            .selection = selected,
            .inputGeneration = inputGeneration,
            .isNoText = isNoText};
}

void FieldInspector::validate(const InsertionTarget& target,
                              std::uint64_t currentInputGeneration) const {
    if (!accessibility_.isTrusted()) refuse(say::accessibilityChanged());
    const auto frontmost = workspace_.frontmostApplication();
    if (!frontmost || frontmost->pid != target.pid ||
        currentInputGeneration != target.inputGeneration)
        refuse(say::destinationChanged());
    if (frontmost->window != target.activeWindow) refuse(say::windowChanged());
    if (target.window && askedTwice([&] { return focusedWindow(target.pid); }) != target.window)
        refuse(say::windowChanged());

    auto element = focusedElement(target.pid);
    if (target.element && !element) element = focusedElement(target.pid);
    if (element && isSecure(*element, applicationTimeout)) refuse(say::notARegularField());
    if (!target.element) return;
    if (element != target.element) refuse(say::fieldChanged());
    if (target.selection &&
        askedTwice([&] { return selection(*element, applicationTimeout); }) != target.selection)
        refuse(say::cursorMoved());
}

InsertionTarget FieldInspector::completed(InsertionTarget target) const {
    if (target.selection || !accessibility_.isTrusted()) return target;
    if (!target.element) {
        auto found = focus(target.pid);
        target.element = std::move(found.field);
        target.isNoText = found.isNoText;
    }
    if (target.element) target.selection = selection(*target.element, applicationTimeout);
    return target;
}

std::optional<std::string> FieldInspector::correctionField(const InsertionTarget& target,
                                                           bool requireFocus) const {
    if (!accessibility_.isTrusted()) return std::nullopt;
    if (target.pid == workspace_.ownPid() || !target.element) return std::nullopt;
    if (isSecure(*target.element, fieldTimeout)) return std::nullopt;
    if (requireFocus && !hasFocus(target)) return std::nullopt;
    auto value =
        valueAs<std::string>(accessibility_.attribute(*target.element, "AXValue", fieldTimeout));
    // A string never has more UTF-16 units than bytes, so only a long one needs counting.
    if (value && value->size() > static_cast<std::size_t>(CorrectionContext::fieldLimit) &&
        text::utf16Length(*value) > CorrectionContext::fieldLimit)
        return std::nullopt;
    return value;
}

bool FieldInspector::hasFocus(const InsertionTarget& target) const {
    if (focusedElement(target.pid) != target.element) return false;
    return !target.window || focusedWindow(target.pid) == target.window;
}

FieldInspector::Focus FieldInspector::focus(pid_t pid) const {
    auto element = focusedElement(pid);
    if (!element) return {};
    if (isSecure(*element, applicationTimeout)) refuse(say::selectRegularField());
    const auto itsRole = role(*element, applicationTimeout);
    if (isTextRole(itsRole) || selection(*element, applicationTimeout)) return {std::move(element)};
    return {.field = {}, .isNoText = itsRole.has_value()};
}

std::optional<AXElement> FieldInspector::focusedElement(pid_t pid) const {
    const auto application = accessibility_.applicationElement(pid);
    if (auto focused = valueAs<AXElement>(
            accessibility_.attribute(application, "AXFocusedUIElement", applicationTimeout)))
        return focusedTextElement(*focused);
    const auto everything = accessibility_.systemWideElement();
    auto focused = valueAs<AXElement>(
        accessibility_.attribute(everything, "AXFocusedUIElement", applicationTimeout));
    if (!focused || accessibility_.processIdentifier(*focused) != pid) return std::nullopt;
    return focusedTextElement(*focused);
}

std::optional<AXElement> FieldInspector::focusedTextElement(const AXElement& start) const {
    if (isTextRole(role(start, applicationTimeout)) || isSecure(start, applicationTimeout))
        return start;

    struct Candidate {
        AXElement element;
        std::size_t depth;
    };
    const auto deadline = clock_.now() + searchLimit;
    std::vector<Candidate> stack{{start, 0}};
    for (std::size_t examined = 0; !stack.empty();) {
        const Candidate candidate = std::move(stack.back());
        stack.pop_back();
        if (examined == searchedElements || clock_.now() >= deadline) break;
        const auto itsRole = role(candidate.element, searchTimeout);
        if (isTextRole(itsRole) || isSecure(candidate.element, searchTimeout)) {
            if (valueAs<bool>(accessibility_.attribute(candidate.element, "AXFocused",
                                                       searchTimeout)) == true)
                return candidate.element;
            continue;  // not counted, and not searched
        }
        if (candidate.depth <= searchedDepth && !isLeafRole(itsRole)) {
            const auto children = valueAs<std::vector<AXElement>>(
                accessibility_.attribute(candidate.element, "AXChildren", searchTimeout));
            if (children) {
                const auto skipped =
                    children->size() - std::min(children->size(), searchedChildren);
                for (auto i = skipped; i < children->size(); ++i)
                    stack.push_back({(*children)[i], candidate.depth + 1});
            }
        }
        ++examined;
    }
    return start;
}

std::optional<AXElement> FieldInspector::focusedWindow(pid_t pid) const {
    return valueAs<AXElement>(accessibility_.attribute(accessibility_.applicationElement(pid),
                                                       "AXFocusedWindow", applicationTimeout));
}

std::optional<Utf16Range> FieldInspector::selection(const AXElement& element,
                                                    Duration timeout) const {
    return valueAs<Utf16Range>(accessibility_.attribute(element, "AXSelectedTextRange", timeout));
}

std::optional<std::string> FieldInspector::role(const AXElement& element, Duration timeout) const {
    return valueAs<std::string>(accessibility_.attribute(element, "AXRole", timeout));
}

bool FieldInspector::isSecure(const AXElement& element, Duration timeout) const {
    return valueAs<std::string>(accessibility_.attribute(element, "AXSubrole", timeout)) ==
           "AXSecureTextField";
}

}  // namespace quorvi
