#pragma once

#include "Quorvi/platform/linux/gio/GLibHandles.h"
#include "Quorvi/platform/linux/shortcuts/KeyRepeats.h"

typedef struct _GSettings GSettings;

namespace quorvi {

// What GNOME does with a key that stays down.
struct GnomeKeyRepeat {
    bool isOn = true;
    KeyRepeats::Timing timing = KeyRepeats::Timing::unknown();
};

// The settings of the keyboard, null if they are not installed. For one thread.
GLibHandle<GSettings> gnomeKeyboardSettings();

// What they say; the defaults for null. May take a millisecond.
GnomeKeyRepeat gnomeKeyRepeat(GSettings* keyboard);

}  // namespace quorvi
