#include "Quorvi/platform/linux/gnome/GnomeKeyRepeat.h"

#include <chrono>

#include "Quorvi/platform/linux/gnome/GnomeSettings.h"

namespace quorvi {

GLibHandle<GSettings> gnomeKeyboardSettings() {
    return gnomeSettings("org.gnome.desktop.peripherals.keyboard");
}

GnomeKeyRepeat gnomeKeyRepeat(GSettings* keyboard) {
    if (!keyboard) return {};
    const auto milliseconds = [keyboard](const char* key) {
        return std::chrono::milliseconds(g_settings_get_uint(keyboard, key));
    };
    return {g_settings_get_boolean(keyboard, "repeat") != FALSE,
            KeyRepeats::Timing::of(milliseconds("delay"), milliseconds("repeat-interval"))};
}

}  // namespace quorvi
