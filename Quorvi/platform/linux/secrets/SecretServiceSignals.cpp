#include "Quorvi/platform/linux/secrets/SecretServiceSignals.h"

#include <gio/gio.h>
#include <pthread.h>

#include <thread>
#include <utility>

#include "Quorvi/platform/linux/secrets/SecretServiceCall.h"

namespace quorvi {

using namespace secrets;

// Everything but construction and destruction happens on the watch's own thread.
struct SecretServiceSignals::Watch {
    explicit Watch(std::function<void()> callback) : onSignal(std::move(callback)) {
        thread = std::thread([this] { run(); });
        pthread_setname_np(thread.native_handle(), "secret-signals");
    }

    ~Watch() {
        // Connecting ends at once, and the loop as soon as it has begun.
        g_cancellable_cancel(cancellable);
        GSource* end = g_idle_source_new();
        g_source_set_callback(
            end,
            [](gpointer data) -> gboolean {
                g_main_loop_quit(static_cast<GMainLoop*>(data));
                return G_SOURCE_REMOVE;
            },
            loop, nullptr);
        g_source_attach(end, context);
        g_source_unref(end);
        thread.join();
        g_object_unref(cancellable);
        g_main_loop_unref(loop);
        g_main_context_unref(context);
    }

    void run() {
        g_main_context_push_thread_default(context);
        if (connect()) {
            g_main_loop_run(loop);
            for (const auto subscription : subscriptions)
                g_dbus_connection_signal_unsubscribe(bus, subscription);
            g_signal_handlers_disconnect_by_data(bus, this);
            g_dbus_connection_close_sync(bus, nullptr, nullptr);
            g_object_unref(bus);
        }
        while (g_main_context_iteration(context, FALSE)) continue;
        g_main_context_pop_thread_default(context);
    }

    bool connect() {
        gchar* address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, cancellable, nullptr);
        if (address == nullptr) return false;
        bus = g_dbus_connection_new_for_address_sync(address, ownConnection, nullptr, cancellable,
                                                     nullptr);
        g_free(address);
        if (bus == nullptr) return false;
        g_signal_connect(bus, "closed",
                         G_CALLBACK(+[](GDBusConnection*, gboolean, GError*, gpointer watch) {
                             static_cast<Watch*>(watch)->onSignal();
                         }),
                         this);
        subscriptions[0] = subscribe(serviceName, nullptr, nullptr, nullptr);
        subscriptions[1] = subscribe(busName, busName, "NameOwnerChanged", serviceName);
        // The bus has heard of the subscriptions once it answers what is asked after them.
        GVariant* answer =
            g_dbus_connection_call_sync(bus, busName, "/", busName, "GetId", nullptr, nullptr,
                                        G_DBUS_CALL_FLAGS_NONE, -1, cancellable, nullptr);
        if (answer != nullptr) g_variant_unref(answer);
        onSignal();
        return true;
    }

    guint subscribe(const char* sender, const char* interface, const char* member,
                    const char* argument) {
        return g_dbus_connection_signal_subscribe(
            bus, sender, interface, member, nullptr, argument, G_DBUS_SIGNAL_FLAGS_NONE,
            [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant*,
               gpointer watch) { static_cast<Watch*>(watch)->onSignal(); },
            this, nullptr);
    }

    const std::function<void()> onSignal;
    GMainContext* const context = g_main_context_new();
    GMainLoop* const loop = g_main_loop_new(context, FALSE);
    GCancellable* const cancellable = g_cancellable_new();
    GDBusConnection* bus = nullptr;
    guint subscriptions[2] = {};
    std::thread thread;
};

SecretServiceSignals::SecretServiceSignals(std::function<void()> onSignal)
    : watch_(std::make_unique<Watch>(std::move(onSignal))) {}

SecretServiceSignals::~SecretServiceSignals() = default;

}  // namespace quorvi
