#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiPeers.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {

// Somebody who knows a program's windows by the accessibility bus alone: finds what is shown by its
// role and name, presses it and types into it. Each call waits a while for what it looks for, and
// returns whether it came.
class ScreenReader : atspi::BusObserver {
public:
    // Roles as the bus numbers them.
    enum Role : std::uint32_t {
        checkBox = 7,
        comboBox = 11,
        label = 29,
        pushButton = 43,
        passwordText = 40,
        radioButton = 44,
        scrollBar = 48,
        text = 61,
        heading = 83,
    };

    explicit ScreenReader(pid_t pid) : pid_(pid) {}

    bool sees(Role role, const std::string& name) {
        return eventually([&] { return find(role, name).has_value(); });
    }
    bool missesSoon(Role role, const std::string& name) {
        return eventually([&] { return !find(role, name); });
    }
    bool press(Role role, const std::string& name) {
        return eventually([&] {
            const auto found = find(role, name);
            return found && (has(*found, enabledState) || has(*found, sensitiveState)) &&
                   call(*found, actionInterface, "DoAction", atspi::arguments(0));
        });
    }
    bool write(Role role, const std::string& name, const std::string& content) {
        return eventually([&] {
            const auto found = find(role, name);
            return found && call(*found, "org.a11y.atspi.EditableText", "SetTextContents",
                                 atspi::arguments(content));
        });
    }
    // Gives it the focus, for keys.
    bool focus(Role role, const std::string& name) {
        return eventually([&] {
            const auto found = find(role, name);
            return found && call(*found, "org.a11y.atspi.Component", "GrabFocus");
        });
    }
    // What a text field holds; empty if it is not shown.
    std::string content(Role role, const std::string& name) {
        const auto found = find(role, name);
        if (!found) return {};
        return atspi::readText(
                   call(*found, "org.a11y.atspi.Text", "GetText", atspi::arguments(0, -1)))
            .value_or("");
    }
    // The roles of what can be used and has no name. Nobody asks for that of a scroll bar.
    std::string unnamed() {
        std::string all;
        walk([&](const Object& object) {
            const auto actions = atspi::readInteger(
                peers_.call(atspi::propertyCall(object, actionInterface, "NActions"), deadline()));
            if ((actions.value_or(0) > 0 || has(object, focusableState)) &&
                nameOf(object).empty() && roleOf(object) != scrollBar)
                all += std::to_string(roleOf(object)) + ' ';
            return false;
        });
        return all;
    }
    // Everything that can be seen, for a failure's message.
    std::string everything() {
        std::string all;
        walk([&](const Object& object) {
            all += std::to_string(roleOf(object)) + ' ' + nameOf(object) + '\n';
            return false;
        });
        return all;
    }

private:
    using Object = atspi::ObjectRef;
    static constexpr auto actionInterface = "org.a11y.atspi.Action";
    static constexpr int enabledState = 8, focusableState = 11, showingState = 25;
    static constexpr int sensitiveState = 24;  // GTK 4's word for enabled

    void focusChanged(const Object&, bool) override {}
    void windowActiveChanged(const Object&, bool) override {}
    void peerLeft(const std::string&) override {}
    void busLost() override {}

    static TimePoint deadline() {
        return std::chrono::steady_clock::now() + std::chrono::seconds(5);
    }
    // Null when the object is gone or refuses.
    atspi::Variant call(const Object& object, const char* interface, const char* method,
                        atspi::Variant arguments = atspi::arguments()) {
        return peers_.call({object, interface, method, std::move(arguments)}, deadline());
    }
    std::vector<Object> children(const Object& object) {
        return atspi::readObjects(call(object, atspi::accessibleInterface, "GetChildren"))
            .value_or(std::vector<Object>());
    }
    std::uint32_t roleOf(const Object& object) {
        return atspi::readUnsigned(call(object, atspi::accessibleInterface, "GetRole")).value_or(0);
    }
    std::string nameOf(const Object& object) {
        return atspi::readText(
                   peers_.call(atspi::propertyCall(object, atspi::accessibleInterface, "Name"),
                               deadline()))
            .value_or("");
    }
    bool has(const Object& object, int state) {
        const auto states = atspi::readStates(call(object, atspi::accessibleInterface, "GetState"));
        return states && (states->bits >> state & 1) != 0;
    }

    // Goes through what is shown until `stop` is content.
    void walk(const std::function<bool(const Object&)>& stop) {
        std::vector<Object> rest;
        for (const auto& bus : peers_.namesOf(pid_, deadline()))
            rest = children({bus, atspi::rootPath});
        while (!rest.empty()) {
            const auto object = rest.back();
            rest.pop_back();
            if (!has(object, showingState)) continue;
            if (stop(object)) return;
            for (auto& child : children(object)) rest.push_back(std::move(child));
        }
    }
    std::optional<Object> find(Role role, const std::string& name) {
        std::optional<Object> found;
        walk([&](const Object& object) {
            if (roleOf(object) != role || nameOf(object) != name) return false;
            found = object;
            return true;
        });
        return found;
    }

    const pid_t pid_;
    atspi::AtspiBus bus_{*this};
    atspi::AtspiPeers peers_{bus_};
};

}  // namespace quorvi::test
