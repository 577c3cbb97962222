#include "Quorvi/platform/linux/secrets/SecretServiceSignals.h"

#include <utility>

#include "Quorvi/platform/linux/gio/BusConnection.h"
#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/secrets/SecretServiceCall.h"

namespace quorvi {

using namespace secrets;

// Everything but construction and destruction happens on the watch's own thread.
struct SecretServiceSignals::Watch {
    explicit Watch(std::function<void()> callback) : onSignal(std::move(callback)) {}
    ~Watch() { g_cancellable_cancel(cancellable.get()); }

    void connect() {
        bus = connectToBus(G_BUS_TYPE_SESSION, cancellable.get());
        if (!bus) return;
        g_signal_connect(bus.get(), "closed",
                         G_CALLBACK(+[](GDBusConnection*, gboolean, GError*, gpointer watch) {
                             static_cast<Watch*>(watch)->onSignal();
                         }),
                         this);
        subscriptions[0] = subscribe(serviceName, nullptr, nullptr, nullptr);
        subscriptions[1] = subscribe(busName, busName, "NameOwnerChanged", serviceName);
        // The bus has carried out the subscriptions once it answers a later call.
        const Variant answer(g_dbus_connection_call_sync(bus.get(), busName, "/", busName, "GetId",
                                                         nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE,
                                                         -1, cancellable.get(), nullptr));
        onSignal();
    }

    void disconnect() {
        if (!bus) return;
        for (const auto subscription : subscriptions)
            g_dbus_connection_signal_unsubscribe(bus.get(), subscription);
        g_signal_handlers_disconnect_by_data(bus.get(), this);
        g_dbus_connection_close_sync(bus.get(), nullptr, nullptr);
        bus.reset();
    }

    guint subscribe(const char* sender, const char* interface, const char* member,
                    const char* argument) {
        return g_dbus_connection_signal_subscribe(
            bus.get(), sender, interface, member, nullptr, argument, G_DBUS_SIGNAL_FLAGS_NONE,
            [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant*,
               gpointer watch) { static_cast<Watch*>(watch)->onSignal(); },
            this, nullptr);
    }

    const std::function<void()> onSignal;
    const GLibHandle<GCancellable> cancellable{g_cancellable_new()};
    GLibHandle<GDBusConnection> bus;
    guint subscriptions[2] = {};
    GLibThread thread{"secret-signals", [this] { connect(); }, [this] { disconnect(); }};
};

SecretServiceSignals::SecretServiceSignals(std::function<void()> onSignal)
    : watch_(std::make_unique<Watch>(std::move(onSignal))) {}

SecretServiceSignals::~SecretServiceSignals() = default;

}  // namespace quorvi
