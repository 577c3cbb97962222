#include "Quorvi/platform/linux/gio/LogindSignals.h"

#include <gio/gio.h>

#include <cstdlib>
#include <string>
#include <utility>

namespace quorvi {

namespace {

constexpr auto service = "org.freedesktop.login1";
constexpr auto managerPath = "/org/freedesktop/login1";
constexpr auto manager = "org.freedesktop.login1.Manager";
constexpr auto session = "org.freedesktop.login1.Session";

using FoundSession = std::function<void(const std::string& path)>;

// `found` is given an empty path if there is no such session.
void findSession(BusClient& bus, const char* id, FoundSession found) {
    bus.call({service, managerPath, manager, "GetSession"}, g_variant_new("(s)", id),
             [found = std::move(found)](GVariant* answer) {
                 if (answer == nullptr || !g_variant_is_of_type(answer, G_VARIANT_TYPE("(o)")))
                     return found({});
                 const GLibHandle<GVariant> path(g_variant_get_child_value(answer, 0));
                 found(g_variant_get_string(path.get(), nullptr));
             });
}

// "auto" is the caller's session, or the user's on the display if the user's service manager has
// started the caller. Some implementations of logind don't know it.
void findOwnSession(BusClient& bus, const FoundSession& found) {
    findSession(bus, "auto", [&bus, found](const std::string& path) {
        const char* id = std::getenv("XDG_SESSION_ID");
        if (!path.empty() || id == nullptr) return found(path);
        findSession(bus, id, found);
    });
}

}  // namespace

void watchSleep(BusClient& systemBus, std::function<void(bool)> changed) {
    systemBus.onSignal({service, manager, "PrepareForSleep", managerPath},
                       [changed = std::move(changed)](GVariant* parameters) {
                           if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(b)"))) return;
                           gboolean sleeping = FALSE;
                           g_variant_get(parameters, "(b)", &sleeping);
                           changed(sleeping != FALSE);
                       });
}

void watchSessionLock(BusClient& systemBus, std::function<void()> locked) {
    findOwnSession(systemBus, [&systemBus, locked = std::move(locked)](const std::string& path) {
        if (path.empty()) return;
        systemBus.onSignal({service, session, "Lock", path}, [locked](GVariant*) { locked(); });
        systemBus.onChange({service, path, session, "LockedHint"}, [locked](GVariant* value) {
            if (value != nullptr && g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) &&
                g_variant_get_boolean(value))
                locked();
        });
    });
}

}  // namespace quorvi
