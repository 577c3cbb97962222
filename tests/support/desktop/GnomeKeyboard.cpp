#include "tests/support/desktop/GnomeKeyboard.h"

#include "Quorvi/platform/linux/gio/BusConnection.h"

namespace quorvi::test {
namespace {

constexpr auto service = "org.gnome.Mutter.RemoteDesktop";
constexpr auto sessionInterface = "org.gnome.Mutter.RemoteDesktop.Session";
constexpr std::uint8_t evdevOffset = 8;

}  // namespace

GnomeKeyboard::GnomeKeyboard() : bus_(connectToBus(G_BUS_TYPE_SESSION, nullptr)) {
    const auto created = call("/org/gnome/Mutter/RemoteDesktop", service, "CreateSession", nullptr);
    const char* path = "/";
    if (created) g_variant_get(created.get(), "(&o)", &path);
    session_ = path;
    call(session_.c_str(), sessionInterface, "Start", nullptr);
}

GnomeKeyboard::~GnomeKeyboard() {
    call(session_.c_str(), sessionInterface, "Stop", nullptr);
}

void GnomeKeyboard::send(std::uint8_t keycode, bool isDown) {
    call(session_.c_str(), sessionInterface, "NotifyKeyboardKeycode",
         g_variant_new("(ub)", guint32{keycode} - evdevOffset, static_cast<gboolean>(isDown)));
}

GLibHandle<GVariant> GnomeKeyboard::call(const char* path, const char* interface,
                                         const char* method, GVariant* arguments) {
    return GLibHandle<GVariant>(
        g_dbus_connection_call_sync(bus_.get(), service, path, interface, method, arguments,
                                    nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
}

}  // namespace quorvi::test
