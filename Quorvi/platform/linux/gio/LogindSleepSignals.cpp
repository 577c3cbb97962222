#include "Quorvi/platform/linux/gio/LogindSleepSignals.h"

#include <gio/gio.h>

#include <utility>

namespace quorvi {

struct LogindSleepSignals::Link {
    std::function<void(bool)> onSignal;
    GCancellable* cancellable = g_cancellable_new();
    GDBusConnection* bus = nullptr;
    guint subscription = 0;

    ~Link() {
        if (bus != nullptr) {
            g_dbus_connection_signal_unsubscribe(bus, subscription);
            g_object_unref(bus);
        }
        g_object_unref(cancellable);
    }

    static void connected(GObject*, GAsyncResult* result, gpointer data) {
        GError* error = nullptr;
        auto* connection = g_dbus_connection_new_for_address_finish(result, &error);
        if (connection == nullptr) {
            // The link is gone when the connecting was cancelled; `data` must not be touched then.
            g_error_free(error);
            return;
        }
        auto* link = static_cast<Link*>(data);
        link->bus = connection;
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

LogindSleepSignals::LogindSleepSignals(GMainContext* context, std::function<void(bool)> onSignal)
    : link_(std::make_unique<Link>()) {
    link_->onSignal = std::move(onSignal);
    gchar* address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr);
    if (address == nullptr) return;
    // A connection of our own: the shared one ends the process when the bus goes away.
    g_main_context_push_thread_default(context);
    g_dbus_connection_new_for_address(
        address,
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, link_->cancellable, Link::connected, link_.get());
    g_main_context_pop_thread_default(context);
    g_free(address);
}

LogindSleepSignals::~LogindSleepSignals() {
    g_cancellable_cancel(link_->cancellable);
}

}  // namespace quorvi
