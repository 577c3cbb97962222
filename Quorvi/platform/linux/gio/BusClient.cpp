#include "Quorvi/platform/linux/gio/BusClient.h"

#include <string_view>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/gio/BusConnection.h"

namespace quorvi {

namespace {

const char* orAny(const std::string& text) {
    return text.empty() ? nullptr : text.c_str();
}

struct Call {
    const GLibHandle<GCancellable> cancellable;
    BusClient::Receiver answered;

    static void ended(GObject* bus, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Call> call(static_cast<Call*>(data));
        const GLibHandle<GVariant> answer(
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, nullptr));
        if (!g_cancellable_is_cancelled(call->cancellable.get())) call->answered(answer.get());
    }
};

}  // namespace

struct BusClient::Link {
    struct Subscribed {
        guint id = 0;
        Receiver received;
    };

    BusClient& client;
    std::function<void(BusClient&)> whenConnected;
    const GLibHandle<GCancellable> cancellable{g_cancellable_new()};
    GLibHandle<GDBusConnection> bus;
    std::vector<std::unique_ptr<Subscribed>> subscribed;

    Link(BusClient& owner, std::function<void(BusClient&)> then)
        : client(owner), whenConnected(std::move(then)) {}
    ~Link() {
        for (const auto& each : subscribed)
            g_dbus_connection_signal_unsubscribe(bus.get(), each->id);
        g_cancellable_cancel(cancellable.get());
    }

    static void connected(GObject*, GAsyncResult* result, gpointer data) {
        auto* connection = g_dbus_connection_new_for_address_finish(result, nullptr);
        // Null if connecting was cancelled; `data` is then destroyed.
        if (connection == nullptr) return;
        auto& link = *static_cast<Link*>(data);
        link.bus.reset(connection);
        link.whenConnected(link.client);
    }

    static void received(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                         GVariant* parameters, gpointer data) {
        static_cast<Subscribed*>(data)->received(parameters);
    }

    void subscribe(const Signal& signal, Receiver receiver) {
        auto& added =
            *subscribed.emplace_back(std::make_unique<Subscribed>(0U, std::move(receiver)));
        added.id = g_dbus_connection_signal_subscribe(
            bus.get(), signal.service.c_str(), signal.interface.c_str(), signal.name.c_str(),
            orAny(signal.path), orAny(signal.firstArgument), G_DBUS_SIGNAL_FLAGS_NONE, received,
            &added, nullptr);
    }
};

BusClient::BusClient(Bus bus, std::function<void(BusClient&)> connected)
    : link_(std::make_unique<Link>(*this, std::move(connected))) {
    const GLibHandle<char> address(g_dbus_address_get_for_bus_sync(
        bus == Bus::system ? G_BUS_TYPE_SYSTEM : G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!address) return;
    g_dbus_connection_new_for_address(address.get(), ownBusConnection, nullptr,
                                      link_->cancellable.get(), Link::connected, link_.get());
}

BusClient::~BusClient() = default;

void BusClient::onSignal(const Signal& signal, Receiver received) {
    link_->subscribe(signal, std::move(received));
}

void BusClient::onChange(const Property& property, Receiver changed) {
    link_->subscribe(
        {property.service, "org.freedesktop.DBus.Properties", "PropertiesChanged", property.path,
         property.interface},
        [name = property.name, changed = std::move(changed)](GVariant* parameters) {
            if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(sa{sv}as)"))) return;
            const GLibHandle<GVariant> values(g_variant_get_child_value(parameters, 1));
            const GLibHandle<GVariant> value(
                g_variant_lookup_value(values.get(), name.c_str(), nullptr));
            const GLibHandle<GVariant> untold(g_variant_get_child_value(parameters, 2));
            const std::unique_ptr<const char*, void (*)(void*)> names(
                g_variant_get_strv(untold.get(), nullptr), g_free);
            if (value || g_strv_contains(names.get(), name.c_str())) changed(value.get());
        });
}

std::string BusClient::uniqueName() const {
    return g_dbus_connection_get_unique_name(link_->bus.get());
}

void BusClient::call(const Method& method, GVariant* arguments, Receiver answered) {
    auto* cancellable = link_->cancellable.get();
    g_dbus_connection_call(
        link_->bus.get(), method.service.c_str(), method.path.c_str(), method.interface.c_str(),
        method.name.c_str(), arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, cancellable,
        Call::ended,
        new Call{GLibHandle<GCancellable>(G_CANCELLABLE(g_object_ref(cancellable))),
                 std::move(answered)});
}

}  // namespace quorvi
