#include "Quorvi/platform/linux/remote/RemoteDesktopProbe.h"

#include <gio/gio.h>

#include "Quorvi/platform/linux/gio/BusConnection.h"
#include "Quorvi/platform/linux/portal/PortalBackends.h"

namespace quorvi {
namespace {

constexpr auto busPatience = std::chrono::milliseconds(500);
// The first with tokens; before, each session is a question.
constexpr std::uint32_t firstWithTokens = 2;

GLibHandle<GVariant> ask(const char* service, const char* path, const char* interface,
                         const char* method, GVariant* arguments, const char* answer,
                         Duration patience) {
    const GLibHandle<GVariant> owned(g_variant_ref_sink(arguments));
    const auto bus = connectToBus(G_BUS_TYPE_SESSION, nullptr);
    if (!bus) return nullptr;
    return GLibHandle<GVariant>(g_dbus_connection_call_sync(
        bus.get(), service, path, interface, method, owned.get(), G_VARIANT_TYPE(answer),
        G_DBUS_CALL_FLAGS_NONE,
        static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(patience).count()), nullptr,
        nullptr));
}

}  // namespace

bool hasRememberingRemoteDesktop(Duration patience) {
    if (!desktopHasPortal("org.freedesktop.impl.portal.RemoteDesktop")) return false;
    const auto answer = ask(
        "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
        "org.freedesktop.DBus.Properties", "Get",
        g_variant_new("(ss)", "org.freedesktop.portal.RemoteDesktop", "version"), "(v)", patience);
    if (!answer) return false;
    const GLibHandle<GVariant> boxed(g_variant_get_child_value(answer.get(), 0));
    const GLibHandle<GVariant> version(g_variant_get_variant(boxed.get()));
    return g_variant_is_of_type(version.get(), G_VARIANT_TYPE_UINT32) &&
           g_variant_get_uint32(version.get()) >= firstWithTokens;
}

bool hasMutterRemoteDesktop() {
    const auto answer =
        ask("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
            g_variant_new("(s)", "org.gnome.Mutter.RemoteDesktop"), "(b)", busPatience);
    gboolean isOwned = FALSE;
    if (answer) g_variant_get(answer.get(), "(b)", &isOwned);
    return isOwned != FALSE;
}

}  // namespace quorvi
