#include "Quorvi/platform/linux/atspi/AtspiBus.h"

#include <gio/gio.h>

#include <atomic>
#include <mutex>
#include <string_view>
#include <utility>

#include "Quorvi/platform/linux/atspi/AtspiVariant.h"
#include "Quorvi/platform/linux/gio/BusConnection.h"
#include "Quorvi/platform/linux/gio/GLibThread.h"

namespace quorvi::atspi {
namespace {

constexpr const char* busLauncher = "org.a11y.Bus";
constexpr const char* busLauncherPath = "/org/a11y/bus";
constexpr const char* statusInterface = "org.a11y.Status";
constexpr const char* textEvents[] = {"object:text-changed", "object:text-caret-moved"};
constexpr int launcherTimeoutMs = 10'000;  // activation starts two processes

bool isCancelled(const GError* error) {
    return error && g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
}

}  // namespace

// Everything below runs on the bus's thread, in its own main context, unless it says otherwise.
struct AtspiBus::Impl {
    explicit Impl(BusObserver& o) : observer(o) {}
    ~Impl() { g_cancellable_cancel(cancellable.get()); }

    void end() {
        dropBus();
        closeSession();
    }

    void openSession() {
        session = connectToBus(G_BUS_TYPE_SESSION, cancellable.get());
        if (!session) return;
        statusSubscription = g_dbus_connection_signal_subscribe(
            session.get(), busLauncher, propertiesInterface, "PropertiesChanged", busLauncherPath,
            statusInterface, G_DBUS_SIGNAL_FLAGS_NONE, &Impl::statusChanged, this, nullptr);
        watch = g_bus_watch_name_on_connection(
            session.get(), busLauncher, G_BUS_NAME_WATCHER_FLAGS_NONE,
            [](GDBusConnection*, const char*, const char*, gpointer self) {
                static_cast<Impl*>(self)->launcherAppeared();
            },
            [](GDBusConnection*, const char*, gpointer self) {
                static_cast<Impl*>(self)->launcherVanished();
            },
            this, nullptr);
    }

    void closeSession() {
        if (!session) return;
        g_bus_unwatch_name(watch);
        g_dbus_connection_signal_unsubscribe(session.get(), statusSubscription);
        g_dbus_connection_close_sync(session.get(), nullptr, nullptr);
        session.reset();
    }

    void callLauncher(const char* interface, const char* method, GVariant* arguments,
                      GAsyncReadyCallback done) {
        g_dbus_connection_call(session.get(), busLauncher, busLauncherPath, interface, method,
                               arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, launcherTimeoutMs,
                               cancellable.get(), done, this);
    }

    // The request may reach a launcher that is about to end with its bus, answered or not. So it is
    // made again, which starts another launcher, until a bus is there.
    void enable() {
        if (!session || enableTries == 0) return;
        --enableTries;
        callLauncher(
            propertiesInterface, "Set",
            g_variant_new("(ssv)", statusInterface, "IsEnabled", g_variant_new_boolean(TRUE)),
            [](GObject* source, GAsyncResult* result, gpointer data) {
                GError* failure = nullptr;
                const Variant reply(
                    g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &failure));
                const GLibHandle<GError> error(failure);
                auto* self = static_cast<Impl*>(data);
                if (!error && self->bus) self->enableTries = 0;
                if (error && !isCancelled(error.get())) self->enable();
            });
    }

    void launcherVanished() {
        setEnabled(false);
        enable();
    }

    void setEnabled(bool on) {
        if (enabled.exchange(on) != on) observer.usabilityChanged();
    }

    void launcherAppeared() {
        readEnabled();
        callLauncher(busLauncher, "GetAddress", nullptr,
                     [](GObject* source, GAsyncResult* result, gpointer self) {
                         Variant reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source),
                                                                     result, nullptr));
                         const char* address = nullptr;
                         if (!reply) return;
                         g_variant_get(reply.get(), "(&s)", &address);
                         static_cast<Impl*>(self)->openBus(address);
                     });
    }

    void readEnabled() {
        callLauncher(propertiesInterface, "Get",
                     g_variant_new("(ss)", statusInterface, "IsEnabled"),
                     [](GObject* source, GAsyncResult* result, gpointer self) {
                         Variant reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source),
                                                                     result, nullptr));
                         if (!reply) return;
                         GVariant* boxed = nullptr;
                         g_variant_get(reply.get(), "(v)", &boxed);
                         const Variant value(boxed);
                         static_cast<Impl*>(self)->setEnabled(
                             g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) &&
                             g_variant_get_boolean(value.get()));
                     });
    }

    static void statusChanged(GDBusConnection*, const char*, const char*, const char*, const char*,
                              GVariant*, gpointer self) {
        // Read again, for the signal may carry the name without the value.
        static_cast<Impl*>(self)->readEnabled();
    }

    void openBus(const char* address) {
        dropBus();
        g_dbus_connection_new_for_address(
            address, ownBusConnection, nullptr, cancellable.get(),
            [](GObject*, GAsyncResult* result, gpointer self) {
                // Null, and the object gone, if connecting was cancelled.
                auto* made = g_dbus_connection_new_for_address_finish(result, nullptr);
                if (made) static_cast<Impl*>(self)->busOpened(made);
            },
            this);
    }

    void busOpened(GDBusConnection* made) {
        dropBus();
        g_dbus_connection_set_exit_on_close(made, FALSE);
        closedHandler = g_signal_connect(
            made, "closed", G_CALLBACK(+[](GDBusConnection*, gboolean, GError*, gpointer self) {
                static_cast<Impl*>(self)->dropBus();
            }),
            this);
        subscriptions[0] = subscribe(made, nullptr, objectEventInterface, "StateChanged", "focused",
                                     &Impl::focusEvent);
        subscriptions[1] =
            subscribe(made, nullptr, windowEventInterface, nullptr, nullptr, &Impl::windowEvent);
        subscriptions[2] = subscribe(made, "org.freedesktop.DBus", "org.freedesktop.DBus",
                                     "NameOwnerChanged", nullptr, &Impl::ownerChanged);
        registerEvents(made);
        enableTries = 0;
        {
            std::lock_guard lock(mutex);
            bus.reset(made, GLibRelease{});
        }
        observer.usabilityChanged();
    }

    guint subscribe(GDBusConnection* made, const char* sender, const char* interface,
                    const char* member, const char* detail, GDBusSignalCallback callback) {
        return g_dbus_connection_signal_subscribe(made, sender, interface, member, nullptr, detail,
                                                  G_DBUS_SIGNAL_FLAGS_NONE, callback, this,
                                                  nullptr);
    }

    // Applications emit only those events for which somebody has registered.
    void registerEvents(GDBusConnection* made) {
        for (const char* event :
             {"object:state-changed:focused", "window:activate", "window:deactivate"})
            registerEvent(made, event, "");
    }

    // Of one application, or of all if its name is empty.
    void registerEvent(GDBusConnection* made, const char* event, const char* application) {
        callRegistry(made, "RegisterEvent",
                     g_variant_new("(s@ass)", event, g_variant_new("as", nullptr), application));
    }

    void callRegistry(GDBusConnection* made, const char* method, GVariant* parameters) {
        g_dbus_connection_call(made, registryName, "/org/a11y/atspi/registry", registryName, method,
                               parameters, nullptr, G_DBUS_CALL_FLAGS_NONE, launcherTimeoutMs,
                               cancellable.get(), nullptr, nullptr);
    }

    void addTextListener(const char* application) {
        ++textListeners;
        if (!bus) return;
        for (const char* event : textEvents) registerEvent(bus.get(), event, application);
    }

    void removeTextListener() {
        if (--textListeners > 0 || !bus) return;
        for (const char* event : textEvents)
            callRegistry(bus.get(), "DeregisterEvent", g_variant_new("(s)", event));
    }

    void dropBus() {
        std::shared_ptr<GDBusConnection> dropped;
        {
            std::lock_guard lock(mutex);
            dropped = std::move(bus);
            bus = nullptr;
        }
        if (!dropped) return;
        g_signal_handler_disconnect(dropped.get(), closedHandler);
        for (guint id : subscriptions) g_dbus_connection_signal_unsubscribe(dropped.get(), id);
        g_dbus_connection_close(dropped.get(), nullptr, nullptr, nullptr);
        observer.busLost();
        observer.usabilityChanged();
    }

    static void focusEvent(GDBusConnection*, const char* sender, const char* path, const char*,
                           const char*, GVariant* parameters, gpointer self) {
        if (g_variant_n_children(parameters) < 2) return;
        Variant detail(g_variant_get_child_value(parameters, 1));
        if (!g_variant_is_of_type(detail.get(), G_VARIANT_TYPE_INT32)) return;
        static_cast<Impl*>(self)->observer.focusChanged({sender, path},
                                                        g_variant_get_int32(detail.get()) != 0);
    }

    static void windowEvent(GDBusConnection*, const char* sender, const char* path, const char*,
                            const char* member, GVariant*, gpointer self) {
        auto& observer = static_cast<Impl*>(self)->observer;
        // GTK 4 writes the names in lower case.
        if (g_ascii_strcasecmp(member, "Activate") == 0)
            observer.windowActiveChanged({sender, path}, true);
        else if (g_ascii_strcasecmp(member, "Deactivate") == 0)
            observer.windowActiveChanged({sender, path}, false);
    }

    static void ownerChanged(GDBusConnection* made, const char*, const char*, const char*,
                             const char*, GVariant* parameters, gpointer self) {
        const char *name = nullptr, *before = nullptr, *after = nullptr;
        if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(sss)"))) return;
        g_variant_get(parameters, "(&s&s&s)", &name, &before, &after);
        if (*after == '\0') static_cast<Impl*>(self)->observer.peerLeft(name);
        if (std::string_view(name) == registryName && *before == '\0' && *after != '\0')
            static_cast<Impl*>(self)->registerEvents(made);
    }

    BusObserver& observer;
    const GLibHandle<GCancellable> cancellable{g_cancellable_new()};
    GLibHandle<GDBusConnection> session;
    guint watch = 0;
    guint statusSubscription = 0;
    int textListeners = 0;
    int enableTries = 0;  // left, while asked to switch accessibility on
    gulong closedHandler = 0;
    guint subscriptions[3] = {};
    std::atomic<bool> enabled = false;

    mutable std::mutex mutex;  // guards the pointer only
    std::shared_ptr<GDBusConnection> bus;

    GLibThread thread{"atspi-bus", [this] { openSession(); }, [this] { end(); }};
};

AtspiBus::AtspiBus(BusObserver& observer) : impl_(std::make_unique<Impl>(observer)) {}
AtspiBus::~AtspiBus() = default;

bool AtspiBus::isUsable() const {
    return impl_->enabled && connection() != nullptr;
}

std::shared_ptr<GDBusConnection> AtspiBus::connection() const {
    std::lock_guard lock(impl_->mutex);
    return impl_->bus;
}

void AtspiBus::run(std::function<void()> work) {
    impl_->thread.invoke(std::move(work));
}

void AtspiBus::addTextListener(const std::string& application) {
    impl_->addTextListener(application.c_str());
}

void AtspiBus::removeTextListener() {
    impl_->removeTextListener();
}

void AtspiBus::enable() {
    impl_->thread.invoke([impl = impl_.get()] {
        impl->enableTries = 3;
        impl->enable();
    });
}

}  // namespace quorvi::atspi
