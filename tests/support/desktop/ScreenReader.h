#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiProtocol.h"

namespace quorvi::test {

// Somebody who knows a program's windows by the accessibility bus alone: finds what is shown by its
// role and name, reads it, presses it and types into it.
class ScreenReader {
public:
    // Roles as the bus numbers them.
    enum Role : std::uint32_t {
        checkBox = 7,
        comboBox = 11,
        label = 29,
        menuItem = 35,
        pushButton = 43,
        passwordText = 40,
        radioButton = 44,
        scrollBar = 48,
        text = 61,
        heading = 83,
    };

    explicit ScreenReader(pid_t pid);
    ~ScreenReader() { g_object_unref(bus_); }
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    // Whether something of that role and name can be seen, now or a little later.
    bool sees(Role role, const std::string& name);
    // It is gone, or will be in a moment.
    bool missesSoon(Role role, const std::string& name);
    bool press(Role role, const std::string& name);
    bool write(Role role, const std::string& name, const std::string& content);
    bool isChecked(Role role, const std::string& name) {
        const auto found = find(role, name);
        return found && has(*found, checkedState);
    }
    bool isEnabled(Role role, const std::string& name) {
        const auto found = find(role, name);
        return found && has(*found, enabledState);
    }
    // Gives the keyboard to what the label names. A choice is called by what is chosen in it.
    bool focus(const std::string& labelled);
    std::string chosen(const std::string& labelled) {
        const auto target = labelledBy(labelled);
        return target ? nameOf(*target) : std::string();
    }
    // The roles of what can be used and has no name. Nobody asks for that of a scroll bar.
    std::string unnamed();
    // Everything that can be seen, for a failure's message.
    std::string everything();

private:
    using Object = atspi::ObjectRef;
    struct Unref {
        void operator()(GVariant* value) const { g_variant_unref(value); }
    };
    using Value = std::unique_ptr<GVariant, Unref>;
    static constexpr int patience = 5000;  // milliseconds
    static constexpr int checkedState = 4, enabledState = 8, focusableState = 11, focusedState = 12,
                         showingState = 25;
    static constexpr std::uint32_t labelsRelation = 1;

    [[noreturn]] static void fail(GError* error);

    // Null when the object is gone or refuses.
    Value call(const Object& object, const char* interface, const char* method,
               GVariant* arguments = nullptr);

    std::vector<Object> children(const Object& object);

    std::uint32_t roleOf(const Object& object);

    std::string nameOf(const Object& object);

    bool has(const Object& object, int state);

    std::optional<Object> application();

    // Goes through what is shown until `stop` is content.
    bool walk(const std::function<bool(const Object&)>& stop);

    std::optional<Object> find(Role role, const std::string& name);

    std::optional<Object> labelledBy(const std::string& name);

    pid_t pid_;
    GDBusConnection* bus_ = nullptr;
};

}  // namespace quorvi::test
