#include "tests/fakes/FakeAccessibility.h"

#include <algorithm>
#include <utility>

#include "QuorviCore/text/Characters.h"
#include "QuorviCore/text/Text.h"

namespace quorvi::test {

struct FakeAccessibility::Node {
    std::optional<pid_t> pid;
    std::map<std::string, AXValue, std::less<>> attributes;
    Duration delay{};
};

struct FakeAccessibility::Reference : AXElement::Reference {
    explicit Reference(Node n) : node(std::make_unique<Node>(std::move(n))) {}
    bool sameAs(const AXElement::Reference& other) const override { return this == &other; }
    std::unique_ptr<Node> node;
};

FakeAccessibility::FakeAccessibility(VirtualScheduler& scheduler)
    : scheduler_(scheduler),
      systemWide_(std::make_shared<Reference>(Node{.pid = {}, .attributes = {}})) {}

FakeAccessibility::Node& FakeAccessibility::node(const AXElement& element) {
    return *static_cast<const Reference&>(element.reference()).node;
}

AXElement FakeAccessibility::applicationElement(pid_t pid) {
    if (const auto found = applications_.find(pid); found != applications_.end())
        return found->second;
    auto application = make(pid, "AXGroup");
    applications_.emplace(pid, application);
    return application;
}

bool FakeAccessibility::answers(const AXElement& element, std::string_view name, Duration timeout) {
    queries.emplace_back(name);
    if (onQuery) onQuery();
    const auto delay = node(element).delay;
    scheduler_.elapse(std::min(delay, timeout));
    return delay <= timeout;
}

std::optional<AXValue> FakeAccessibility::attribute(const AXElement& element, std::string_view name,
                                                    Duration timeout) {
    if (!answers(element, name, timeout)) return std::nullopt;
    const auto& attributes = node(element).attributes;
    const auto found = attributes.find(name);
    return found == attributes.end() ? std::nullopt : std::optional(found->second);
}

bool FakeAccessibility::setAttribute(const AXElement& element, std::string_view name, bool value,
                                     Duration timeout) {
    const bool answered = answers(element, name, timeout);
    if (answered) set(element, name, value);
    if (answered && onSet) onSet(element, name);
    return answered;
}

std::optional<pid_t> FakeAccessibility::processIdentifier(const AXElement& element) {
    return node(element).pid;
}

AXElement FakeAccessibility::make(pid_t pid, std::string role) {
    Node made{.pid = pid, .attributes = {}};
    made.attributes.emplace("AXRole", std::move(role));
    return AXElement(std::make_shared<Reference>(std::move(made)));
}

AXElement FakeAccessibility::makeText(pid_t pid, std::string text) {
    auto element = make(pid, "AXTextArea");
    set(element, "AXSelectedTextRange", Utf16Range{text::utf16Length(text), 0});
    set(element, "AXValue", std::move(text));
    set(element, "AXFocused", false);
    return element;
}

void FakeAccessibility::set(const AXElement& element, std::string_view name, AXValue value) {
    node(element).attributes.insert_or_assign(std::string(name), std::move(value));
}

void FakeAccessibility::unset(const AXElement& element, std::string_view name) {
    auto& attributes = node(element).attributes;
    if (const auto found = attributes.find(name); found != attributes.end())
        attributes.erase(found);
}

void FakeAccessibility::append(const AXElement& parent, const AXElement& child) {
    auto& attributes = node(parent).attributes;
    auto& children = attributes.try_emplace("AXChildren", std::vector<AXElement>{}).first->second;
    std::get<std::vector<AXElement>>(children).push_back(child);
}

void FakeAccessibility::focus(const AXElement& element) {
    auto& system = node(systemWide_).attributes;
    if (const auto before = system.find("AXFocusedUIElement"); before != system.end())
        set(std::get<AXElement>(before->second), "AXFocused", false);
    set(element, "AXFocused", true);
    set(applicationElement(*node(element).pid), "AXFocusedUIElement", element);
    set(systemWide_, "AXFocusedUIElement", element);
}

void FakeAccessibility::setWindow(pid_t pid, const AXElement& window) {
    set(applicationElement(pid), "AXFocusedWindow", window);
}

void FakeAccessibility::type(const AXElement& element, std::string_view added) {
    auto whole = text(element);
    auto& attributes = node(element).attributes;
    Utf16Range selection{text::utf16Length(whole), 0};
    if (const auto found = attributes.find("AXSelectedTextRange"); found != attributes.end())
        selection = std::get<Utf16Range>(found->second);
    const auto begin = text::offsetOfUtf16(whole, selection.location).value_or(whole.size());
    const auto end = text::offsetOfUtf16(whole, selection.end()).value_or(whole.size());
    whole.replace(begin, end - begin, added);
    set(element, "AXValue", std::move(whole));
    set(element, "AXSelectedTextRange",
        Utf16Range{selection.location + text::utf16Length(added), 0});
}

std::string FakeAccessibility::text(const AXElement& element) const {
    const auto& attributes = node(element).attributes;
    const auto found = attributes.find("AXValue");
    return found == attributes.end() ? std::string() : std::get<std::string>(found->second);
}

void FakeAccessibility::setDelay(const AXElement& element, Duration delay) {
    node(element).delay = delay;
}

}  // namespace quorvi::test
