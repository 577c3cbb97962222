#include "tests/support/desktop/ScreenReader.h"

#include <stdexcept>
#include <utility>

#include "tests/support/Waiting.h"

namespace quorvi::test {

ScreenReader::ScreenReader(pid_t pid) : pid_(pid) {
    GError* error = nullptr;
    auto* session = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error);
    if (!session) fail(error);
    auto* answer = g_dbus_connection_call_sync(session, "org.a11y.Bus", "/org/a11y/bus",
                                               "org.a11y.Bus", "GetAddress", nullptr, nullptr,
                                               G_DBUS_CALL_FLAGS_NONE, patience, nullptr, &error);
    g_object_unref(session);
    if (!answer) fail(error);
    const char* address = nullptr;
    g_variant_get(answer, "(&s)", &address);
    bus_ = g_dbus_connection_new_for_address_sync(
        address,
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, &error);
    g_variant_unref(answer);
    if (!bus_) fail(error);
}

bool ScreenReader::press(Role role, const std::string& name) {
    return eventually([&] {
        const auto found = find(role, name);
        if (!found || !has(*found, enabledState)) return false;
        auto done = call(*found, "org.a11y.atspi.Action", "DoAction", g_variant_new("(i)", 0));
        return done != nullptr;
    });
}

bool ScreenReader::write(Role role, const std::string& name, const std::string& content) {
    return eventually([&] {
        const auto found = find(role, name);
        return found && call(*found, "org.a11y.atspi.EditableText", "SetTextContents",
                             g_variant_new("(s)", content.c_str()));
    });
}

bool ScreenReader::focus(const std::string& labelled) {
    return eventually([&] {
        const auto target = labelledBy(labelled);
        return target && call(*target, "org.a11y.atspi.Component", "GrabFocus") &&
               has(*target, focusedState);
    });
}

std::string ScreenReader::unnamed() {
    std::string all;
    walk([&](const Object& object) {
        const auto actions = call(object, "org.a11y.atspi.Action", "GetActions");
        const bool acts = actions && g_variant_get_size(actions.get()) > 0;
        if ((acts || has(object, focusableState)) && nameOf(object).empty() &&
            roleOf(object) != scrollBar)
            all += std::to_string(roleOf(object)) + ' ';
        return false;
    });
    return all;
}

std::string ScreenReader::everything() {
    std::string all;
    walk([&](const Object& object) {
        all += std::to_string(roleOf(object)) + ' ' + nameOf(object) + '\n';
        return false;
    });
    return all;
}

void ScreenReader::fail(GError* error) {
    std::runtime_error thrown(error->message);
    g_error_free(error);
    throw thrown;
}

ScreenReader::Value ScreenReader::call(const Object& object, const char* interface,
                                       const char* method, GVariant* arguments) {
    return Value(g_dbus_connection_call_sync(bus_, object.bus.c_str(), object.path.c_str(),
                                             interface, method, arguments, nullptr,
                                             G_DBUS_CALL_FLAGS_NONE, patience, nullptr, nullptr));
}

std::vector<ScreenReader::Object> ScreenReader::children(const Object& object) {
    std::vector<Object> found;
    const auto answer = call(object, atspi::accessibleInterface, "GetChildren");
    if (!answer) return found;
    GVariantIter* each = nullptr;
    g_variant_get(answer.get(), "(a(so))", &each);
    const char *bus = nullptr, *path = nullptr;
    while (g_variant_iter_next(each, "(&s&o)", &bus, &path)) found.push_back({bus, path});
    g_variant_iter_free(each);
    return found;
}

std::uint32_t ScreenReader::roleOf(const Object& object) {
    std::uint32_t role = 0;
    if (const auto answer = call(object, atspi::accessibleInterface, "GetRole"))
        g_variant_get(answer.get(), "(u)", &role);
    return role;
}

std::string ScreenReader::nameOf(const Object& object) {
    const auto answer = call(object, atspi::propertiesInterface, "Get",
                             g_variant_new("(ss)", atspi::accessibleInterface, "Name"));
    if (!answer) return {};
    GVariant* boxed = nullptr;
    g_variant_get(answer.get(), "(v)", &boxed);
    std::string name = g_variant_get_string(boxed, nullptr);
    g_variant_unref(boxed);
    return name;
}

bool ScreenReader::has(const Object& object, int state) {
    const auto answer = call(object, atspi::accessibleInterface, "GetState");
    if (!answer) return false;
    GVariantIter* each = nullptr;
    g_variant_get(answer.get(), "(au)", &each);
    std::uint32_t words[2] = {0, 0};
    for (auto& word : words) g_variant_iter_next(each, "u", &word);
    g_variant_iter_free(each);
    return words[state / 32] >> (state % 32) & 1;
}

std::optional<ScreenReader::Object> ScreenReader::application() {
    for (const auto& each : children({atspi::registryName, atspi::rootPath})) {
        const Value answer(g_dbus_connection_call_sync(
            bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "GetConnectionUnixProcessID", g_variant_new("(s)", each.bus.c_str()), nullptr,
            G_DBUS_CALL_FLAGS_NONE, patience, nullptr, nullptr));
        if (!answer) continue;
        std::uint32_t pid = 0;
        g_variant_get(answer.get(), "(u)", &pid);
        if (pid == static_cast<std::uint32_t>(pid_)) return each;
    }
    return std::nullopt;
}

bool ScreenReader::walk(const std::function<bool(const Object&)>& stop) {
    const auto root = application();
    if (!root) return false;
    auto rest = children(*root);
    while (!rest.empty()) {
        const auto object = rest.back();
        rest.pop_back();
        if (!has(object, showingState)) continue;
        if (stop(object)) return true;
        for (auto& child : children(object)) rest.push_back(std::move(child));
    }
    return false;
}

std::optional<ScreenReader::Object> ScreenReader::find(Role role, const std::string& name) {
    std::optional<Object> found;
    walk([&](const Object& object) {
        if (roleOf(object) != role || nameOf(object) != name) return false;
        found = object;
        return true;
    });
    return found;
}

std::optional<ScreenReader::Object> ScreenReader::labelledBy(const std::string& name) {
    const auto naming = find(label, name);
    const auto answer =
        naming ? call(*naming, atspi::accessibleInterface, "GetRelationSet") : nullptr;
    if (!answer) return std::nullopt;
    std::optional<Object> found;
    GVariantIter *relations = nullptr, *targets = nullptr;
    g_variant_get(answer.get(), "(a(ua(so)))", &relations);
    for (std::uint32_t type = 0; g_variant_iter_next(relations, "(ua(so))", &type, &targets);
         g_variant_iter_free(targets)) {
        const char *bus = nullptr, *path = nullptr;
        if (type == labelsRelation && g_variant_iter_next(targets, "(&s&o)", &bus, &path))
            found = Object{bus, path};
    }
    g_variant_iter_free(relations);
    return found;
}

bool ScreenReader::sees(Role role, const std::string& name) {
    return eventually([&] { return find(role, name).has_value(); });
}

bool ScreenReader::missesSoon(Role role, const std::string& name) {
    return eventually([&] { return !find(role, name).has_value(); });
}

}  // namespace quorvi::test
