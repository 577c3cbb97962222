#include "Quorvi/platform/linux/gio/LogindSleepSignals.h"

#include <utility>

#include "Quorvi/platform/linux/gio/BusConnection.h"

namespace quorvi {

struct LogindSleepSignals::Link {
    std::function<void(bool)> onSignal;
    const GLibHandle<GCancellable> cancellable{g_cancellable_new()};
    GLibHandle<GDBusConnection> bus;
    guint subscription = 0;

    ~Link() {
        if (bus) g_dbus_connection_signal_unsubscribe(bus.get(), subscription);
        g_cancellable_cancel(cancellable.get());
    }

    static void connected(GObject*, GAsyncResult* result, gpointer data) {
        auto* connection = g_dbus_connection_new_for_address_finish(result, nullptr);
        // Null if connecting was cancelled; `data` is then destroyed.
        if (connection == nullptr) return;
        auto* link = static_cast<Link*>(data);
        link->bus.reset(connection);
        link->subscription = g_dbus_connection_signal_subscribe(
            connection, "org.freedesktop.login1", "org.freedesktop.login1.Manager",
            "PrepareForSleep", "/org/freedesktop/login1", nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
            prepareForSleep, link, nullptr);
    }

    static void prepareForSleep(GDBusConnection*, const gchar*, const gchar*, const gchar*,
                                const gchar*, GVariant* parameters, gpointer data) {
        if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(b)"))) return;
        gboolean starting = FALSE;
        g_variant_get(parameters, "(b)", &starting);
        static_cast<Link*>(data)->onSignal(starting != FALSE);
    }
};

LogindSleepSignals::LogindSleepSignals(std::function<void(bool)> onSignal)
    : link_(std::make_unique<Link>()) {
    link_->onSignal = std::move(onSignal);
    const GLibHandle<char> address(
        g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr));
    if (!address) return;
    g_dbus_connection_new_for_address(address.get(), ownBusConnection, nullptr,
                                      link_->cancellable.get(), Link::connected, link_.get());
}

LogindSleepSignals::~LogindSleepSignals() = default;

}  // namespace quorvi
