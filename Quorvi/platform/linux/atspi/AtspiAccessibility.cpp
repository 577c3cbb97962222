#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"

#include <algorithm>
#include <chrono>
#include <type_traits>
#include <utility>

#include "Quorvi/platform/linux/atspi/AtspiBus.h"
#include "Quorvi/platform/linux/atspi/AtspiChildren.h"
#include "Quorvi/platform/linux/atspi/AtspiFocusFinder.h"
#include "Quorvi/platform/linux/atspi/AtspiFocusTracker.h"
#include "Quorvi/platform/linux/atspi/AtspiPeers.h"
#include "Quorvi/platform/linux/atspi/AtspiText.h"
#include "Quorvi/platform/linux/atspi/AtspiTypingWatch.h"

namespace quorvi {
namespace {

using namespace atspi;
using namespace std::chrono_literals;

constexpr Duration processTimeout = 250ms;

struct SystemReference : AXElement::Reference {
    bool sameAs(const Reference& other) const override {
        return dynamic_cast<const SystemReference*>(&other) != nullptr;
    }
};

struct ApplicationReference : AXElement::Reference {
    explicit ApplicationReference(pid_t p) : pid(p) {}
    bool sameAs(const Reference& other) const override {
        const auto* same = dynamic_cast<const ApplicationReference*>(&other);
        return same && same->pid == pid;
    }
    pid_t pid;
};

struct ObjectReference : AXElement::Reference {
    explicit ObjectReference(ObjectRef o) : object(std::move(o)) {}
    bool sameAs(const Reference& other) const override {
        const auto* same = dynamic_cast<const ObjectReference*>(&other);
        return same && same->object == object;
    }
    ObjectRef object;
};

AXElement elementOf(ObjectRef object) {
    return AXElement(std::make_shared<ObjectReference>(std::move(object)));
}

// Wraps what was found into the port's type, built in place: g++ 12 takes a moved temporary variant
// for uninitialised under the sanitizers.
template <class T>
std::optional<AXValue> valueOf(std::optional<T> found) {
    std::optional<AXValue> value;
    if (!found) return value;
    if constexpr (std::is_same_v<T, ObjectRef>)
        value.emplace(std::in_place_type<AXElement>, elementOf(std::move(*found)));
    else
        value.emplace(std::in_place_type<T>, std::move(*found));
    return value;
}

}  // namespace

struct AtspiAccessibility::Impl : BusObserver {
    Impl(std::function<bool()> tap, std::function<void()> trustChanged)
        : canInstallTap(std::move(tap)), onTrustChanged(std::move(trustChanged)) {}

    void focusChanged(const ObjectRef& object, bool focused) override {
        tracker.focusChanged(object, focused);
    }
    void windowActiveChanged(const ObjectRef& window, bool active) override {
        tracker.windowActiveChanged(window, active);
    }
    void peerLeft(const std::string& name) override {
        tracker.peerLeft(name);
        peers.forget(name);
    }
    void busLost() override {
        tracker.clear();
        peers.forgetAll();
    }
    void usabilityChanged() override {
        if (onTrustChanged) onTrustChanged();
    }

    std::optional<AXValue> ofObject(const ObjectRef& object, std::string_view name,
                                    TimePoint deadline);
    std::optional<AXValue> children(const ObjectRef& object, TimePoint deadline);
    std::optional<std::string> role(const ObjectRef& object, TimePoint deadline);
    bool paste(const ObjectRef& object, TimePoint deadline);

    std::function<bool()> canInstallTap;
    std::function<void()> onTrustChanged;
    AtspiFocusTracker tracker;
    // The bus's thread reports to the two members around it, so it ends before them: peers only
    // keeps a reference to the bus and may be made first.
    AtspiPeers peers{bus};
    AtspiFocusFinder finder{peers, tracker};
    AtspiText text{peers};
    AtspiBus bus{*this};
};

std::optional<AXValue> AtspiAccessibility::Impl::ofObject(const ObjectRef& object,
                                                          std::string_view name,
                                                          TimePoint deadline) {
    const auto ask = [&](const char* method) {
        return peers.call({object, accessibleInterface, method, arguments()}, deadline);
    };
    if (name == "AXRole") return valueOf(role(object, deadline));
    if (name == "AXSubrole") {
        const auto found = readUnsigned(ask("GetRole"));
        const bool secure = found && isSecure(static_cast<Role>(*found));
        return valueOf(secure ? std::optional<std::string>("AXSecureTextField") : std::nullopt);
    }
    if (name == "AXFocused") {
        const auto states = readStates(ask("GetState"));
        return valueOf(states ? std::optional(states->has(State::focused)) : std::nullopt);
    }
    if (name == "AXValue") return valueOf(text.value(object, deadline));
    if (name == "AXSelectedTextRange") return valueOf(text.selection(object, deadline));
    if (name == "AXChildren") return children(object, deadline);
    return std::nullopt;
}

std::optional<std::string> AtspiAccessibility::Impl::role(const ObjectRef& object,
                                                          TimePoint deadline) {
    std::vector<Call> calls;
    for (const char* method : {"GetRole", "GetState", "GetInterfaces"})
        calls.push_back({object, accessibleInterface, method, arguments()});
    const auto replies = peers.callAll(std::move(calls), deadline);
    const auto number = readUnsigned(replies[0]);
    const auto states = readStates(replies[1]);
    auto interfaces = readTexts(replies[2]);
    if (!number || !states || !interfaces) return std::nullopt;
    return std::string(
        accessibilityRole({static_cast<Role>(*number), *states, std::move(*interfaces)}));
}

std::optional<AXValue> AtspiAccessibility::Impl::children(const ObjectRef& object,
                                                          TimePoint deadline) {
    std::optional<std::vector<AXElement>> elements(std::in_place);
    auto children = lastChildren(peers, {object}, deadline);
    for (auto& child : children.front()) elements->push_back(elementOf(std::move(child)));
    return valueOf(std::move(elements));
}

bool AtspiAccessibility::Impl::paste(const ObjectRef& object, TimePoint deadline) {
    const auto caret =
        readInteger(peers.call(propertyCall(object, textInterface, "CaretOffset"), deadline));
    return caret && peers.call({object, editableTextInterface, "PasteText", arguments(*caret)},
                               deadline) != nullptr;
}

AtspiAccessibility::AtspiAccessibility(std::function<bool()> canInstallTap,
                                       std::function<void()> onTrustChanged)
    : impl_(std::make_unique<Impl>(std::move(canInstallTap), std::move(onTrustChanged))) {}

AtspiAccessibility::~AtspiAccessibility() = default;

bool AtspiAccessibility::isTrusted() const {
    return impl_->bus.isUsable() && impl_->canInstallTap();
}

void AtspiAccessibility::requestTrust() {
    impl_->bus.enable();
}

AXElement AtspiAccessibility::applicationElement(pid_t pid) {
    return AXElement(std::make_shared<ApplicationReference>(pid));
}

AXElement AtspiAccessibility::systemWideElement() {
    return AXElement(std::make_shared<SystemReference>());
}

std::optional<AXValue> AtspiAccessibility::attribute(const AXElement& element,
                                                     std::string_view name, Duration timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    const auto& reference = element.reference();
    auto& finder = impl_->finder;
    if (const auto* object = dynamic_cast<const ObjectReference*>(&reference))
        return impl_->ofObject(object->object, name, deadline);
    if (const auto* application = dynamic_cast<const ApplicationReference*>(&reference)) {
        if (name == "AXFocusedUIElement")
            return valueOf(finder.focusedObjectOf(application->pid, deadline));
        if (name == "AXFocusedWindow")
            return valueOf(finder.activeWindowOf(application->pid, deadline));
        return std::nullopt;
    }
    if (name == "AXFocusedUIElement") return valueOf(finder.focusedObject(deadline));
    return std::nullopt;
}

bool AtspiAccessibility::setAttribute(const AXElement& element, std::string_view name, bool value,
                                      Duration timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    if (const auto* object = dynamic_cast<const ObjectReference*>(&element.reference()))
        return name == "AXPaste" && value && impl_->paste(object->object, deadline);
    const auto* application = dynamic_cast<const ApplicationReference*>(&element.reference());
    if (!application || name != "AXManualAccessibility" || !value) return false;
    std::vector<Call> questions;
    for (const auto& bus : impl_->finder.namesOf(application->pid, deadline))
        questions.push_back({{bus, rootPath}, accessibleInterface, "GetAttributes", arguments()});
    const auto answers = impl_->peers.callAll(std::move(questions), deadline);
    return std::any_of(answers.begin(), answers.end(),
                       [](const Variant& answer) { return answer != nullptr; });
}

std::optional<pid_t> AtspiAccessibility::processIdentifier(const AXElement& element) {
    const auto& reference = element.reference();
    if (const auto* application = dynamic_cast<const ApplicationReference*>(&reference))
        return application->pid;
    if (const auto* object = dynamic_cast<const ObjectReference*>(&reference))
        return impl_->peers.process(object->object.bus,
                                    std::chrono::steady_clock::now() + processTimeout);
    return std::nullopt;
}

Subscription AtspiAccessibility::onTyping(const AXElement& field, std::function<void()> typed) {
    const auto* object = dynamic_cast<const ObjectReference*>(&field.reference());
    if (!object) return {};
    return Subscription(
        std::make_shared<AtspiTypingWatch>(impl_->bus, object->object, std::move(typed)));
}

}  // namespace quorvi
