#include "Quorvi/platform/linux/remote/PortalKeyboard.h"

#include <gio/gio.h>

#include <utility>

#include "Quorvi/platform/linux/portal/PortalBackends.h"

namespace quorvi {
namespace {

constexpr auto remote = "org.freedesktop.portal.RemoteDesktop";
constexpr std::uint32_t keyboard = 1;      // of the devices
constexpr std::uint32_t untilRevoked = 2;  // how long the portal remembers

}  // namespace

// The portal may have died. What serves it does not notice, and the keys would stay down.
void PortalKeyboard::fail() {
    if (std::exchange(hasFailed_, true)) return;
    const auto backend = portalBackend("org.freedesktop.impl.portal.RemoteDesktop");
    if (session_.empty() || backend.empty()) return sinks_.lost();
    portal_.closeAtBackend(backend, session_, [this](GVariant*) { sinks_.lost(); });
}

void PortalKeyboard::create() {
    portal_.request(remote, "CreateSession", {},
                    {{"session_handle_token", g_variant_new_string(portal_.newToken().c_str())}},
                    [this](std::uint32_t response, GVariant* results) {
                        const char* session = nullptr;
                        if (response == 0)
                            g_variant_lookup(results, "session_handle", "&s", &session);
                        if (!session) return sinks_.lost();
                        session_ = session;
                        portal_.onSignal(
                            "org.freedesktop.portal.Session", "Closed",
                            [this](GVariant*) { fail(); }, session_);
                        select();
                    });
}

void PortalKeyboard::select() {
    PortalConnection::Options options{{"types", g_variant_new_uint32(keyboard)},
                                      {"persist_mode", g_variant_new_uint32(untilRevoked)}};
    if (!token_.empty())
        options.emplace_back("restore_token", g_variant_new_string(token_.c_str()));
    portal_.request(
        remote, "SelectDevices", {g_variant_new_object_path(session_.c_str())}, options,
        [this](std::uint32_t response, GVariant*) { response == 0 ? start() : fail(); });
}

void PortalKeyboard::start() {
    portal_.request(remote, "Start",
                    {g_variant_new_object_path(session_.c_str()), g_variant_new_string("")}, {},
                    [this](std::uint32_t response, GVariant* results) {
                        std::uint32_t devices = 0;
                        const char* token = "";
                        if (response == 0) {
                            g_variant_lookup(results, "devices", "u", &devices);
                            g_variant_lookup(results, "restore_token", "&s", &token);
                        }
                        if ((devices & keyboard) != 0)
                            sinks_.opened(token);
                        else
                            sinks_.lost();
                    });
}

void PortalKeyboard::send(std::uint32_t key, bool isDown, std::function<void()> sent) {
    portal_.call(remote, "NotifyKeyboardKeycode",
                 g_variant_new("(oa{sv}iu)", session_.c_str(), nullptr, static_cast<int>(key),
                               isDown ? 1U : 0U),
                 [this, sent = std::move(sent)](GVariant* answer) { answer ? sent() : fail(); });
}

}  // namespace quorvi
