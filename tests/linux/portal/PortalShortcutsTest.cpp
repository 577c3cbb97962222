#include "Quorvi/platform/linux/portal/PortalShortcuts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <semaphore>
#include <string_view>

#include "Quorvi/platform/linux/gio/BusConnection.h"
#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

constexpr auto portal = "/org/freedesktop/portal/desktop";
constexpr auto interfaces =
    "<node><interface name='org.freedesktop.host.portal.Registry'>"
    "<method name='Register'><arg type='s' direction='in'/><arg type='a{sv}' direction='in'/>"
    "</method></interface>"
    "<interface name='org.freedesktop.portal.GlobalShortcuts'>"
    "<method name='CreateSession'><arg type='a{sv}' direction='in'/><arg type='o' direction='out'/>"
    "</method><method name='BindShortcuts'><arg type='o' direction='in'/>"
    "<arg type='a(sa{sv})' direction='in'/><arg type='s' direction='in'/>"
    "<arg type='a{sv}' direction='in'/><arg type='o' direction='out'/></method>"
    "</interface></node>";

// The portal as GNOME 48 was seen to answer: 2 with what it has bound.
class GnomesPortal {
public:
    std::atomic<bool> grants{true};
    std::atomic<int> binds{0};

    GnomesPortal() { ready_.acquire(); }

    void tell(const char* signal, int times = 1) {
        thread_.invoke([this, signal, times] {
            for (int i = 0; i < times; ++i)
                emit(portal, "org.freedesktop.portal.GlobalShortcuts", signal,
                     g_variant_new("(osta{sv})", session_.c_str(), name_.c_str(), guint64{0},
                                   nullptr));
        });
    }

private:
    void begin() {
        bus_ = connectToBus(G_BUS_TYPE_SESSION, nullptr);
        static const auto* node = g_dbus_node_info_new_for_xml(interfaces, nullptr);
        static constexpr GDBusInterfaceVTable table{called, nullptr, nullptr, {}};
        for (auto** interface = node->interfaces; *interface; ++interface)
            g_dbus_connection_register_object(bus_.get(), portal, *interface, &table, this, nullptr,
                                              nullptr);
        const GLibHandle<GVariant> owned(g_dbus_connection_call_sync(
            bus_.get(), "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "RequestName",
            g_variant_new("(su)", "org.freedesktop.portal.Desktop", 0), nullptr,
            G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        ready_.release();
    }

    static void called(GDBusConnection*, const char* sender, const char*, const char*,
                       const char* method, GVariant* arguments, GDBusMethodInvocation* invocation,
                       gpointer data) {
        auto& self = *static_cast<GnomesPortal*>(data);
        if (std::string_view(method) == "Register") {
            self.client_ = sender;
            return g_dbus_method_invocation_return_value(invocation, nullptr);
        }
        // Who has not said its name first is nobody.
        const bool isKnown = self.client_ == sender;
        const GLibHandle<GVariant> options(
            g_variant_get_child_value(arguments, g_variant_n_children(arguments) - 1));
        const char* token = "";
        g_variant_lookup(options.get(), "handle_token", "&s", &token);
        std::string path(sender + 1);
        std::ranges::replace(path, '.', '_');
        path = std::string(portal) + "/request/" + path + '/' + token;
        g_dbus_method_invocation_return_value(invocation, g_variant_new("(o)", path.c_str()));
        GVariantBuilder results;
        g_variant_builder_init(&results, G_VARIANT_TYPE_VARDICT);
        if (std::string_view(method) == "CreateSession") {
            self.session_ = std::string(portal) + "/session/" + token;
            g_variant_builder_add(&results, "{sv}", "session_handle",
                                  g_variant_new_string(self.session_.c_str()));
            return self.emit(path.c_str(), "org.freedesktop.portal.Request", "Response",
                             g_variant_new("(ua{sv})", 0, &results));
        }
        ++self.binds;
        const GLibHandle<GVariant> shortcuts(g_variant_get_child_value(arguments, 1));
        const char* name = "";
        g_variant_get_child(shortcuts.get(), 0, "(&sa{sv})", &name, nullptr);
        self.name_ = name;
        if (isKnown && self.grants)
            g_variant_builder_add(&results, "{sv}", "shortcuts", shortcuts.get());
        self.emit(path.c_str(), "org.freedesktop.portal.Request", "Response",
                  g_variant_new("(ua{sv})", 2, &results));
    }

    void emit(const char* path, const char* interface, const char* signal, GVariant* arguments) {
        g_dbus_connection_emit_signal(bus_.get(), nullptr, path, interface, signal, arguments,
                                      nullptr);
    }

    GLibHandle<GDBusConnection> bus_;
    std::string client_, session_, name_;
    std::binary_semaphore ready_{0};
    GLibThread thread_{"portal's", [this] { begin(); }, [this] { bus_.reset(); }};
};

TEST(PortalShortcuts, AGrantedKeyIsHeldAndEndsThoughItsReleaseIsLost) {
    GnomesPortal desktop;
    LoopScheduler scheduler;
    PortalShortcuts shortcuts(scheduler, false);
    std::string told;
    shortcuts.start(
        [&](const SwallowedKey&, ShortcutSource::Change change) {
            told += change == ShortcutSource::Change::pressed ? "pressed " : "released ";
        },
        [&] { told += shortcuts.isBound() ? "bound " : "unbound "; });
    const auto heard = [&](const std::string& expected) {
        EXPECT_TRUE(until(scheduler, [&] { return told.size() >= expected.size(); }));
        EXPECT_EQ(std::exchange(told, {}), expected);
    };
    const std::vector f9{SwallowedKey{101, 0}}, f8{SwallowedKey{100, 0}};
    shortcuts.bind(f9);
    heard("unbound bound ");
    shortcuts.bind({f9[0], {keyCode::escape, 0}});  // asks nothing anew
    desktop.tell("Activated", 5);
    desktop.tell("Deactivated");
    heard("pressed released ");
    desktop.tell("Activated", 5);
    heard("pressed released ");

    desktop.grants = false;
    shortcuts.bind(f8);
    heard("unbound ");
    EXPECT_TRUE(until(scheduler, [&] { return desktop.binds == 2; }));
    scheduler.runFor(std::chrono::milliseconds(50));
    shortcuts.bind(f8);
    desktop.grants = true;
    shortcuts.bind(f9);
    heard("bound ");
    EXPECT_EQ(desktop.binds, 3) << "the user who has refused a key is not asked again";
}

}  // namespace
}  // namespace quorvi::test
