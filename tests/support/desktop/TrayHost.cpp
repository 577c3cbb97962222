#include "tests/support/desktop/TrayHost.h"

#include <string_view>

#include "Quorvi/platform/linux/gio/BusConnection.h"

namespace quorvi::test {
namespace {

constexpr auto interfaces =
    "<node><interface name='org.kde.StatusNotifierWatcher'>"
    "<method name='RegisterStatusNotifierItem'><arg type='s' direction='in'/></method>"
    "<method name='RegisterStatusNotifierHost'><arg type='s' direction='in'/></method>"
    "<property name='IsStatusNotifierHostRegistered' type='b' access='read'/>"
    "<property name='RegisteredStatusNotifierItems' type='as' access='read'/>"
    "<property name='ProtocolVersion' type='i' access='read'/>"
    "<signal name='StatusNotifierHostRegistered'/>"
    "</interface></node>";

void onCall(GDBusConnection*, const char*, const char*, const char*, const char* method, GVariant*,
            GDBusMethodInvocation* invocation, gpointer announced) {
    if (std::string_view(method) == "RegisterStatusNotifierItem")
        static_cast<std::counting_semaphore<>*>(announced)->release();
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

GVariant* onGet(GDBusConnection*, const char*, const char*, const char*, const char* property,
                GError**, gpointer) {
    const std::string_view name = property;
    if (name == "IsStatusNotifierHostRegistered") return g_variant_new_boolean(TRUE);
    if (name == "ProtocolVersion") return g_variant_new_int32(0);
    return g_variant_new_strv(nullptr, 0);
}

}  // namespace

void TrayHost::begin() {
    connection_ = connectToBus(G_BUS_TYPE_SESSION, nullptr);
    static const auto* node = g_dbus_node_info_new_for_xml(interfaces, nullptr);
    static constexpr GDBusInterfaceVTable table{onCall, onGet, nullptr, {}};
    g_dbus_connection_register_object(connection_.get(), "/StatusNotifierWatcher",
                                      node->interfaces[0], &table, &announced_, nullptr, nullptr);
    const GLibHandle<GVariant> owned(g_dbus_connection_call_sync(
        connection_.get(), "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", "org.kde.StatusNotifierWatcher", 0), nullptr, G_DBUS_CALL_FLAGS_NONE,
        -1, nullptr, nullptr));
    ready_.release();
}

void TrayHost::end() {
    g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

}  // namespace quorvi::test
