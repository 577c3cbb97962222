#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "Quorvi/platform/Accessibility.h"
#include "tests/fakes/VirtualScheduler.h"

namespace quorvi::test {

// Elements that the test makes. Virtual time passes within a query of a slow element, up to the
// time-out; an element that hangs uses up every time-out.
class FakeAccessibility : public Accessibility {
public:
    explicit FakeAccessibility(VirtualScheduler& scheduler);

    bool isTrusted() const override { return trusted; }
    void requestTrust() override { ++trustRequests; }
    AXElement applicationElement(pid_t pid) override;
    AXElement systemWideElement() override { return systemWide_; }
    std::optional<AXValue> attribute(const AXElement& element, std::string_view name,
                                     Duration timeout) override;
    bool setAttribute(const AXElement& element, std::string_view name, bool value,
                      Duration timeout) override;
    std::optional<pid_t> processIdentifier(const AXElement& element) override;

    AXElement make(pid_t pid, std::string role);
    // A focusable text element with a caret at the end of its text.
    AXElement makeText(pid_t pid, std::string text);
    void set(const AXElement& element, std::string_view name, AXValue value);
    void unset(const AXElement& element, std::string_view name);
    void append(const AXElement& parent, const AXElement& child);
    // Moves the focus of the element's application, and of the whole system, to the element.
    void focus(const AXElement& element);
    void setWindow(pid_t pid, const AXElement& window);

    // Replaces the selection of a text element and puts the caret behind the new text.
    void type(const AXElement& element, std::string_view text);
    std::string text(const AXElement& element) const;

    // Time for each query of the element.
    void setDelay(const AXElement& element, Duration delay);
    void hang(const AXElement& element) { setDelay(element, Duration::max()); }

    bool trusted = true;
    int trustRequests = 0;
    std::vector<std::string> queries;  // the attributes that were asked for, in order
    std::function<void()> onQuery;     // called before the element answers
    std::function<void(const AXElement&, std::string_view name)> onSet;  // after it has done so

private:
    struct Node;
    struct Reference;
    static Node& node(const AXElement& element);
    bool answers(const AXElement& element, std::string_view name, Duration timeout);

    VirtualScheduler& scheduler_;
    std::map<pid_t, AXElement> applications_;
    AXElement systemWide_;
};

}  // namespace quorvi::test
