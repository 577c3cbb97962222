#include "tests/fakes/FakeAccessibility.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "QuorviCore/text/Text.h"

namespace quorvi::test {

struct FakeAccessibility::Node {
    std::string name;
    std::optional<pid_t> pid;
    std::map<std::string, AXValue, std::less<>> attributes;
    Duration delay{};
};

struct FakeAccessibility::Reference : AXElement::Reference {
    explicit Reference(Node n) : node(std::make_unique<Node>(std::move(n))) {}
    bool sameAs(const AXElement::Reference& other) const override { return this == &other; }
    std::unique_ptr<Node> node;
};

namespace {

// The byte offset of a UTF-16 offset in UTF-8 text, at most its end.
std::size_t byteOffset(std::string_view text, std::int64_t units) {
    std::size_t at = 0;
    while (at < text.size() && units > 0) {
        const auto lead = static_cast<std::uint8_t>(text[at]);
        units -= lead >= 0xF0 ? 2 : 1;
        at += lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    }
    return std::min(at, text.size());
}

}  // namespace

FakeAccessibility::FakeAccessibility(VirtualScheduler& scheduler)
    : scheduler_(scheduler),
      systemWide_(
          std::make_shared<Reference>(Node{.name = "system", .pid = {}, .attributes = {}})) {}

FakeAccessibility::Node& FakeAccessibility::node(const AXElement& element) {
    return *static_cast<const Reference&>(element.reference()).node;
}

AXElement FakeAccessibility::applicationElement(pid_t pid) {
    if (const auto found = applications_.find(pid); found != applications_.end())
        return found->second;
    auto application = make(pid, "AXGroup", "application " + std::to_string(pid));
    applications_.emplace(pid, application);
    return application;
}

bool FakeAccessibility::answersIn(const Node& node, Duration timeout) {
    scheduler_.elapse(std::min(node.delay, timeout));
    return node.delay <= timeout;
}

std::optional<AXValue> FakeAccessibility::attribute(const AXElement& element, std::string_view name,
                                                    Duration timeout) {
    journal.push_back({node(element).name, std::string(name), timeout, false});
    if (onQuery) onQuery(Query(journal.back()));
    if (!answersIn(node(element), timeout)) return std::nullopt;
    const auto& attributes = node(element).attributes;
    const auto found = attributes.find(name);
    return found == attributes.end() ? std::nullopt : std::optional(found->second);
}

bool FakeAccessibility::setAttribute(const AXElement& element, std::string_view name, bool value,
                                     Duration timeout) {
    journal.push_back({node(element).name, std::string(name), timeout, true});
    if (onQuery) onQuery(Query(journal.back()));
    if (!answersIn(node(element), timeout)) return false;
    set(element, name, value);
    return true;
}

std::optional<pid_t> FakeAccessibility::processIdentifier(const AXElement& element) {
    return node(element).pid;
}

AXElement FakeAccessibility::make(pid_t pid, std::string role, std::string name) {
    Node made{.name = name.empty() ? role : std::move(name), .pid = pid, .attributes = {}};
    made.attributes.emplace("AXRole", std::move(role));
    return AXElement(std::make_shared<Reference>(std::move(made)));
}

AXElement FakeAccessibility::makeText(pid_t pid, std::string text, std::string role,
                                      std::string name) {
    auto element = make(pid, std::move(role), std::move(name));
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
    const auto begin = byteOffset(whole, selection.location);
    const auto end = byteOffset(whole, selection.end());
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

std::vector<std::string> FakeAccessibility::queriesOf(std::string_view attribute) const {
    std::vector<std::string> names;
    for (const auto& query : journal)
        if (query.attribute == attribute) names.push_back(query.element);
    return names;
}

}  // namespace quorvi::test
