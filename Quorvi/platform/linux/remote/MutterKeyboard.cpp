#include "Quorvi/platform/linux/remote/MutterKeyboard.h"

#include <gio/gio.h>

namespace quorvi {
namespace {

constexpr auto service = "org.gnome.Mutter.RemoteDesktop";
constexpr auto sessions = "org.gnome.Mutter.RemoteDesktop.Session";

}  // namespace

void MutterKeyboard::create() {
    bus_.call({service, "/org/gnome/Mutter/RemoteDesktop", service, "CreateSession"}, nullptr,
              [this](GVariant* answer) {
                  if (!answer || !g_variant_is_of_type(answer, G_VARIANT_TYPE("(o)")))
                      return sinks_.lost();
                  const char* session = nullptr;
                  g_variant_get(answer, "(&o)", &session);
                  session_ = session;
                  start();
              });
}

void MutterKeyboard::start() {
    bus_.onSignal({service, sessions, "Closed", session_, {}},
                  [this](GVariant*) { sinks_.lost(); });
    bus_.call({service, session_, sessions, "Start"}, nullptr, [this](GVariant* answer) {
        if (answer)
            sinks_.opened({});
        else
            sinks_.lost();
    });
}

void MutterKeyboard::send(std::uint32_t key, bool isDown, std::function<void()> sent) {
    bus_.call(
        {service, session_, sessions, "NotifyKeyboardKeycode"},
        g_variant_new("(ub)", key, static_cast<gboolean>(isDown)),
        [this, sent = std::move(sent)](GVariant* answer) { answer ? sent() : sinks_.lost(); });
}

}  // namespace quorvi
