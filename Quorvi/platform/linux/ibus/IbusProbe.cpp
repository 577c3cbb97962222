#include "Quorvi/platform/linux/ibus/IbusProbe.h"

#include "Quorvi/platform/linux/gio/BusConnection.h"

namespace quorvi {
namespace {

constexpr int milliseconds = 300;  // for each answer

// Whether the bus has a name in the list that the method returns.
bool has(GDBusConnection* bus, const char* method, const char* name) {
    const GLibHandle<GVariant> answer(g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
        nullptr, G_VARIANT_TYPE("(as)"), G_DBUS_CALL_FLAGS_NONE, milliseconds, nullptr, nullptr));
    if (!answer) return false;
    const GLibHandle<GVariant> names(g_variant_get_child_value(answer.get(), 0));
    const std::unique_ptr<const char*, void (*)(void*)> list(
        g_variant_get_strv(names.get(), nullptr), g_free);
    return g_strv_contains(list.get(), name);
}

}  // namespace

bool ibusReachesFields() {
    constexpr auto ibus = "org.freedesktop.IBus";
    const auto bus = connectToBus(G_BUS_TYPE_SESSION, nullptr);
    return bus && has(bus.get(), "ListNames", "org.gnome.Shell") &&
           (has(bus.get(), "ListNames", ibus) || has(bus.get(), "ListActivatableNames", ibus));
}

}  // namespace quorvi
