#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "Quorvi/platform/Accessibility.h"
#include "tests/support/Waiting.h"

namespace quorvi {
inline void PrintTo(const Utf16Range& range, std::ostream* out) {
    *out << '{' << range.location << ", " << range.length << '}';
}
}  // namespace quorvi

namespace quorvi::test {

// Reads attributes for a test, with time-outs that a busy machine does not reach.
class FieldReader {
public:
    explicit FieldReader(Accessibility& accessibility) : accessibility_(accessibility) {}

    template <class T>
    std::optional<T> get(const AXElement& element, std::string_view name) {
        const auto value = accessibility_.attribute(element, name, std::chrono::seconds(5));
        const auto* typed = value ? std::get_if<T>(&*value) : nullptr;
        return typed ? std::optional<T>(*typed) : std::nullopt;
    }

    std::string role(const AXElement& element) {
        return get<std::string>(element, "AXRole").value_or("");
    }
    bool isSecure(const AXElement& element) {
        return get<std::string>(element, "AXSubrole") == "AXSecureTextField";
    }
    std::optional<std::string> value(const AXElement& element) {
        return get<std::string>(element, "AXValue");
    }
    std::optional<Utf16Range> selection(const AXElement& element) {
        return get<Utf16Range>(element, "AXSelectedTextRange");
    }
    std::optional<AXElement> focused(pid_t pid) {
        const auto application = accessibility_.applicationElement(pid);
        accessibility_.setAttribute(application, "AXManualAccessibility", true,
                                    std::chrono::seconds(5));
        return get<AXElement>(application, "AXFocusedUIElement");
    }
    std::optional<AXElement> focusedAnywhere() {
        return get<AXElement>(accessibility_.systemWideElement(), "AXFocusedUIElement");
    }
    std::optional<AXElement> window(pid_t pid) {
        return get<AXElement>(accessibility_.applicationElement(pid), "AXFocusedWindow");
    }

    // The application's focused element once it is as wanted; nothing after a generous limit.
    std::optional<AXElement> waitFor(pid_t pid,
                                     const std::function<bool(const AXElement&)>& wanted) {
        std::optional<AXElement> found;
        const bool good = eventually([&] { return (found = focused(pid)) && wanted(*found); });
        return good ? found : std::nullopt;
    }
    std::optional<AXElement> waitForFocus(pid_t pid, std::string_view wantedRole) {
        return waitFor(pid, [&](const AXElement& field) { return role(field) == wantedRole; });
    }
    std::optional<AXElement> waitForPassword(pid_t pid) {
        return waitFor(pid, [&](const AXElement& field) { return isSecure(field); });
    }
    bool waitForSelection(const AXElement& element, Utf16Range wanted) {
        return eventually([&] { return selection(element) == wanted; });
    }
    bool waitForValue(const AXElement& element, std::string_view wanted) {
        return eventually([&] { return value(element) == wanted; });
    }

    // The first element of this role below another, as far as the tree is shown.
    std::optional<AXElement> find(const AXElement& element, std::string_view wantedRole,
                                  int depth = 12) {
        if (role(element) == wantedRole) return element;
        const auto children = get<std::vector<AXElement>>(element, "AXChildren");
        if (!children || depth == 0) return std::nullopt;
        for (const auto& child : *children)
            if (auto found = find(child, wantedRole, depth - 1)) return found;
        return std::nullopt;
    }

private:
    Accessibility& accessibility_;
};

}  // namespace quorvi::test
