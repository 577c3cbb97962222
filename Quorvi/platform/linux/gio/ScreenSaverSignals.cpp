#include "Quorvi/platform/linux/gio/ScreenSaverSignals.h"

#include <gio/gio.h>

namespace quorvi {

namespace {

// Each is the name of the service and of its interface. The first one is KDE's and that of
// independent screen savers.
constexpr const char* screenSavers[] = {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver",
                                        "org.mate.ScreenSaver", "org.cinnamon.ScreenSaver",
                                        "org.xfce.ScreenSaver"};

}  // namespace

void watchScreenSavers(BusClient& sessionBus, const std::function<void()>& covered) {
    for (const auto* name : screenSavers)
        sessionBus.onSignal({name, name, "ActiveChanged", {}}, [covered](GVariant* parameters) {
            gboolean active = FALSE;
            if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(b)")))
                g_variant_get(parameters, "(b)", &active);
            if (active) covered();
        });
}

}  // namespace quorvi
