#include "Quorvi/platform/linux/portal/PortalConnection.h"

#include <gio/gio.h>

#include <algorithm>
#include <memory>

namespace quorvi {
namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto appId = "app.quorvi.Quorvi";

}  // namespace

PortalConnection::PortalConnection(std::function<void(PortalConnection&)> ready,
                                   std::function<void()> lost)
    : ready_(std::move(ready)),
      lost_(std::move(lost)),
      bus_(BusClient::Bus::session, [this](BusClient&) { introduce(); }) {}

// Frontends before 1.19 do not know the call; what they know of the program has to do there.
void PortalConnection::introduce() {
    bus_.onSignal({"org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged", {}, service},
                  [this](GVariant* change) {
                      const char *name = nullptr, *before = nullptr, *now = nullptr;
                      if (!g_variant_is_of_type(change, G_VARIANT_TYPE("(sss)"))) return;
                      g_variant_get(change, "(&s&s&s)", &name, &before, &now);
                      if (*before) lost_();
                  });
    call("org.freedesktop.host.portal.Registry", "Register",
         g_variant_new("(s@a{sv})", appId, g_variant_new("a{sv}", nullptr)),
         [this](GVariant*) { ready_(*this); });
}

std::string PortalConnection::newToken() {
    return "quorvi" + std::to_string(++tokens_);
}

void PortalConnection::request(const char* interface, const char* method,
                               std::vector<GVariant*> arguments, const Options& options,
                               Answered answered) {
    const auto token = newToken();
    auto sender = bus_.uniqueName().substr(1);
    std::ranges::replace(sender, '.', '_');
    // Before the call, since the response may come before its answer.
    const auto answer = std::make_shared<Answered>(std::move(answered));
    bus_.onSignal({service,
                   "org.freedesktop.portal.Request",
                   "Response",
                   std::string(path) + "/request/" + sender + '/' + token,
                   {}},
                  [answer](GVariant* response) {
                      if (!*answer || !g_variant_is_of_type(response, G_VARIANT_TYPE("(ua{sv})")))
                          return;
                      std::uint32_t code = 0;
                      GVariant* results = nullptr;
                      g_variant_get(response, "(u@a{sv})", &code, &results);
                      const GLibHandle<GVariant> owned(results);
                      std::exchange(*answer, nullptr)(code, results);
                  });
    GVariantBuilder last;
    g_variant_builder_init(&last, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&last, "{sv}", "handle_token", g_variant_new_string(token.c_str()));
    for (const auto& [name, value] : options) g_variant_builder_add(&last, "{sv}", name, value);
    arguments.push_back(g_variant_builder_end(&last));
    call(interface, method, g_variant_new_tuple(arguments.data(), arguments.size()),
         [answer](GVariant* handle) {
             if (!handle && *answer) std::exchange(*answer, nullptr)(2, nullptr);
         });
}

void PortalConnection::call(const char* interface, const char* method, GVariant* arguments,
                            BusClient::Receiver answered, const std::string& object) {
    bus_.call({service, object, interface, method}, arguments, std::move(answered));
}

void PortalConnection::closeAtBackend(const std::string& backend, const std::string& session,
                                      BusClient::Receiver answered) {
    bus_.call({backend, session, "org.freedesktop.impl.portal.Session", "Close"}, nullptr,
              std::move(answered));
}

void PortalConnection::onSignal(const char* interface, const char* name,
                                BusClient::Receiver received, const std::string& object) {
    bus_.onSignal({service, interface, name, object, {}}, std::move(received));
}

}  // namespace quorvi
