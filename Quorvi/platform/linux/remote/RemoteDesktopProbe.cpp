#include "Quorvi/platform/linux/remote/RemoteDesktopProbe.h"

#include <gio/gio.h>

#include "Quorvi/platform/linux/gio/BusConnection.h"
#include "Quorvi/platform/linux/portal/PortalBackends.h"

namespace quorvi {
namespace {

constexpr int busPatience = 500;  // milliseconds
// The first with tokens; before, each session is a question.
constexpr std::uint32_t firstWithTokens = 2;

}  // namespace

bool hasRememberingRemoteDesktop(Duration patience) {
    if (!desktopHasPortal("org.freedesktop.impl.portal.RemoteDesktop")) return false;
    const auto limit = std::chrono::ceil<std::chrono::milliseconds>(patience);
    const auto answer =
        callOnSessionBus("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                         "org.freedesktop.DBus.Properties", "Get",
                         g_variant_new("(ss)", "org.freedesktop.portal.RemoteDesktop", "version"),
                         static_cast<int>(limit.count()));
    if (!answer || !g_variant_is_of_type(answer.get(), G_VARIANT_TYPE("(v)"))) return false;
    const GLibHandle<GVariant> boxed(g_variant_get_child_value(answer.get(), 0));
    const GLibHandle<GVariant> version(g_variant_get_variant(boxed.get()));
    return g_variant_is_of_type(version.get(), G_VARIANT_TYPE_UINT32) &&
           g_variant_get_uint32(version.get()) >= firstWithTokens;
}

bool hasMutterRemoteDesktop() {
    const auto answer = callOnSessionBus(
        "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
        g_variant_new("(s)", "org.gnome.Mutter.RemoteDesktop"), busPatience);
    gboolean isOwned = FALSE;
    if (answer && g_variant_is_of_type(answer.get(), G_VARIANT_TYPE("(b)")))
        g_variant_get(answer.get(), "(b)", &isOwned);
    return isOwned != FALSE;
}

}  // namespace quorvi
