#include "tests/support/desktop/StandInPortal.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <utility>

#include "Quorvi/platform/linux/gio/BusConnection.h"
#include "tests/support/TestFolder.h"

namespace quorvi::test {
namespace {

constexpr auto portal = "/org/freedesktop/portal/desktop";
constexpr auto store = "/org/freedesktop/impl/portal/PermissionStore";
constexpr auto interfaces = R"(<node>
<interface name='org.freedesktop.host.portal.Registry'>
 <method name='Register'><arg type='s' direction='in'/><arg type='a{sv}' direction='in'/></method>
</interface>
<interface name='org.freedesktop.portal.GlobalShortcuts'>
 <method name='CreateSession'><arg type='a{sv}' direction='in'/><arg type='o' direction='out'/></method>
 <method name='BindShortcuts'><arg type='o' direction='in'/><arg type='a(sa{sv})' direction='in'/>
  <arg type='s' direction='in'/><arg type='a{sv}' direction='in'/><arg type='o' direction='out'/></method>
</interface>
<interface name='org.freedesktop.portal.RemoteDesktop'>
 <method name='CreateSession'><arg type='a{sv}' direction='in'/><arg type='o' direction='out'/></method>
 <method name='SelectDevices'><arg type='o' direction='in'/><arg type='a{sv}' direction='in'/>
  <arg type='o' direction='out'/></method>
 <method name='Start'><arg type='o' direction='in'/><arg type='s' direction='in'/>
  <arg type='a{sv}' direction='in'/><arg type='o' direction='out'/></method>
 <method name='NotifyKeyboardKeycode'><arg type='o' direction='in'/><arg type='a{sv}' direction='in'/>
  <arg type='i' direction='in'/><arg type='u' direction='in'/></method>
</interface>
<interface name='org.freedesktop.impl.portal.Session'><method name='Close'/></interface>
<interface name='org.freedesktop.impl.portal.PermissionStore'>
 <method name='List'><arg type='s' direction='in'/><arg type='as' direction='out'/></method>
 <method name='Delete'><arg type='s' direction='in'/><arg type='s' direction='in'/></method>
</interface></node>)";

constexpr auto session = "/org/freedesktop/portal/desktop/session/one";

// Waits until the one of an earlier test has left.
void own(GDBusConnection* bus, const char* name) {
    constexpr guint32 notQueued = 4, owner = 1;
    guint32 become = 0;
    while (become != owner) {
        const GLibHandle<GVariant> answer(
            g_dbus_connection_call_sync(bus, "org.freedesktop.DBus", "/", "org.freedesktop.DBus",
                                        "RequestName", g_variant_new("(su)", name, notQueued),
                                        nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        g_variant_get(answer.get(), "(u)", &become);
    }
}

// Of a desktop whose backend has that name.
void describeDesktop() {
    static const TestFolder data;
    std::filesystem::create_directories(data.path() / "xdg-desktop-portal/portals");
    data.write("xdg-desktop-portal/portals/standin.portal",
               "[portal]\nDBusName=app.quorvi.StandIn\nUseIn=StandIn\n"
               "Interfaces=org.freedesktop.impl.portal.RemoteDesktop\n");
    setenv("XDG_DATA_DIRS", data.path().c_str(), 1);
    setenv("XDG_CURRENT_DESKTOP", "StandIn", 1);
}

}  // namespace

StandInPortal::StandInPortal() {
    describeDesktop();
    ready_.acquire();
}

void StandInPortal::tell(const char* signal, int times) {
    thread_.invoke([this, signal, times] {
        for (int i = 0; i < times; ++i)
            emit(portal, "org.freedesktop.portal.GlobalShortcuts", signal,
                 g_variant_new("(osta{sv})", session_.c_str(), name_.c_str(), guint64{0}, nullptr));
    });
}

std::string StandInPortal::keys() {
    const std::lock_guard lock(mutex_);
    return std::exchange(keys_, {});
}

std::set<std::string> StandInPortal::remembered() {
    const std::lock_guard lock(mutex_);
    return remembered_;
}

void StandInPortal::remember(const std::string& token) {
    const std::lock_guard lock(mutex_);
    remembered_.insert(token);
}

void StandInPortal::forgetAll() {
    const std::lock_guard lock(mutex_);
    remembered_.clear();
}

void StandInPortal::begin() {
    bus_ = connectToBus(G_BUS_TYPE_SESSION, nullptr);
    static const auto* node = g_dbus_node_info_new_for_xml(interfaces, nullptr);
    static constexpr GDBusInterfaceVTable table{called, nullptr, nullptr, {}};
    backend_ = connectToBus(G_BUS_TYPE_SESSION, nullptr);
    for (auto** interface = node->interfaces; *interface; ++interface) {
        const std::string_view name((*interface)->name);
        const bool isBackends = name.ends_with(".Session");
        g_dbus_connection_register_object(isBackends ? backend_.get() : bus_.get(),
                                          isBackends                ? session
                                          : name.ends_with("Store") ? store
                                                                    : portal,
                                          *interface, &table, this, nullptr, nullptr);
    }
    own(backend_.get(), "app.quorvi.StandIn");
    own(bus_.get(), "org.freedesktop.portal.Desktop");
    own(bus_.get(), "org.freedesktop.impl.portal.PermissionStore");
    // A session ends with its owner's connection.
    g_dbus_connection_signal_subscribe(
        bus_.get(), nullptr, "org.freedesktop.DBus", "NameOwnerChanged", nullptr, nullptr,
        G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* change,
           gpointer data) {
            auto& self = *static_cast<StandInPortal*>(data);
            const char *name = nullptr, *now = nullptr;
            g_variant_get(change, "(&s&s&s)", &name, nullptr, &now);
            if (name == self.client_ && !*now) self.sessions = 0;
        },
        this, nullptr);
    ready_.release();
}

void StandInPortal::called(GDBusConnection*, const char* sender, const char*, const char* interface,
                           const char* method, GVariant* arguments,
                           GDBusMethodInvocation* invocation, void* data) {
    auto& self = *static_cast<StandInPortal*>(data);
    const std::string_view named(method);
    if (std::string_view(interface).ends_with("Store"))
        return self.answerStore(method, arguments, invocation);
    if (named == "Register") {
        self.client_ = sender;
        return g_dbus_method_invocation_return_value(invocation, nullptr);
    }
    if (named == "Close") {
        self.sessions = 0;
        return g_dbus_method_invocation_return_value(invocation, nullptr);
    }
    if (named == "NotifyKeyboardKeycode") return self.answerKey(arguments, invocation);
    const GLibHandle<GVariant> options(
        g_variant_get_child_value(arguments, g_variant_n_children(arguments) - 1));
    const char* token = "";
    g_variant_lookup(options.get(), "handle_token", "&s", &token);
    std::string path(sender + 1);
    std::ranges::replace(path, '.', '_');
    path = std::string(portal) + "/request/" + path + '/' + token;
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(o)", path.c_str()));
    std::uint32_t response = 0;
    auto* found = self.results(method, sender, arguments, response);
    self.emit(path.c_str(), "org.freedesktop.portal.Request", "Response",
              g_variant_new("(u@a{sv})", response, found));
}

GVariant* StandInPortal::results(const std::string& method, const char* sender, GVariant* arguments,
                                 std::uint32_t& response) {
    GVariantBuilder values;
    g_variant_builder_init(&values, G_VARIANT_TYPE_VARDICT);
    const auto add = [&](const char* name, GVariant* value) {
        g_variant_builder_add(&values, "{sv}", name, value);
    };
    if (method == "CreateSession") {
        session_ = session;
        add("session_handle", g_variant_new_string(session_.c_str()));
    } else if (method == "BindShortcuts") {
        ++binds;
        const GLibHandle<GVariant> shortcuts(g_variant_get_child_value(arguments, 1));
        const char* name = "";
        g_variant_get_child(shortcuts.get(), 0, "(&sa{sv})", &name, nullptr);
        name_ = name;
        // Who has not said its name first is nobody.
        if (client_ == sender && grants) add("shortcuts", shortcuts.get());
        response = 2;
    } else if (method == "SelectDevices") {
        const GLibHandle<GVariant> options(g_variant_get_child_value(arguments, 1));
        const char* token = "";
        g_variant_lookup(options.get(), "restore_token", "&s", &token);
        offered_ = token;
    } else {  // Start
        const std::lock_guard lock(mutex_);
        const bool isKnown = remembered_.contains(offered_);
        if (!isKnown) ++questions;
        response = isKnown || grants ? 0 : 1;
        if (response == 0) {
            sessions = 1;
            if (isKnown && renews) remembered_.erase(offered_);
            if (!isKnown || renews) offered_ = "token-" + std::to_string(++tokens_);
            remembered_.insert(offered_);
            add("devices", g_variant_new_uint32(1));
            add("restore_token", g_variant_new_string(offered_.c_str()));
        }
    }
    return g_variant_builder_end(&values);
}

void StandInPortal::answerStore(const std::string& method, GVariant* arguments,
                                GDBusMethodInvocation* invocation) {
    const std::lock_guard lock(mutex_);
    if (method == "Delete") {
        const char* token = "";
        g_variant_get(arguments, "(&s&s)", nullptr, &token);
        remembered_.erase(token);
        return g_dbus_method_invocation_return_value(invocation, nullptr);
    }
    GVariantBuilder names;
    g_variant_builder_init(&names, G_VARIANT_TYPE("as"));
    for (const auto& each : remembered_) g_variant_builder_add(&names, "s", each.c_str());
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(as)", &names));
}

void StandInPortal::answerKey(GVariant* arguments, GDBusMethodInvocation* invocation) {
    gint32 key = 0;
    guint32 isDown = 0;
    g_variant_get_child(arguments, 2, "i", &key);
    g_variant_get_child(arguments, 3, "u", &isDown);
    const std::lock_guard lock(mutex_);
    keys_ += std::to_string(key) + (isDown ? "+ " : "- ");
    if (isDown && dies.exchange(false))
        g_dbus_connection_close_sync(bus_.get(), nullptr, nullptr);
    else
        g_dbus_method_invocation_return_value(invocation, nullptr);
}

void StandInPortal::emit(const char* path, const char* interface, const char* signal,
                         GVariant* arguments) {
    g_dbus_connection_emit_signal(bus_.get(), nullptr, path, interface, signal, arguments, nullptr);
}

}  // namespace quorvi::test
