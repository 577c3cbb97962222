#pragma once

// For adapter sources only: it brings GLib with it.
#include <gio/gio.h>

#include "Quorvi/platform/linux/gio/GLibHandles.h"

namespace quorvi {

// Connections that the process does not share: the shared one ends the process when the bus goes
// away.
inline constexpr auto ownBusConnection = static_cast<GDBusConnectionFlags>(
    G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);

// Connects to the session's or the system's bus. Null if there is none, or when `cancellable`,
// which may be null, is cancelled. Blocks; any thread.
inline GLibHandle<GDBusConnection> connectToBus(GBusType bus, GCancellable* cancellable) {
    const GLibHandle<char> address(g_dbus_address_get_for_bus_sync(bus, cancellable, nullptr));
    if (!address) return nullptr;
    return GLibHandle<GDBusConnection>(g_dbus_connection_new_for_address_sync(
        address.get(), ownBusConnection, nullptr, cancellable, nullptr));
}

// Calls a method on the session's bus over a connection of its own, with floating arguments, and
// waits for the answer. Null on failure; `error`, if there was an answer, says which. Any thread.
inline GLibHandle<GVariant> callOnSessionBus(const char* service, const char* path,
                                             const char* interface, const char* method,
                                             GVariant* arguments, int milliseconds,
                                             GError** error = nullptr) {
    const GLibHandle<GVariant> owned(g_variant_ref_sink(arguments));
    const auto bus = connectToBus(G_BUS_TYPE_SESSION, nullptr);
    if (!bus) return nullptr;
    return GLibHandle<GVariant>(
        g_dbus_connection_call_sync(bus.get(), service, path, interface, method, owned.get(),
                                    nullptr, G_DBUS_CALL_FLAGS_NONE, milliseconds, nullptr, error));
}

}  // namespace quorvi
