#include "Quorvi/platform/linux/keyboard/ChordKeys.h"

#include <linux/input-event-codes.h>

namespace quorvi {

ChordKeys ChordKeys::of(PasteChord chord) {
    using enum PasteChord;
    switch (chord) {
        case controlV:
            return {{KEY_LEFTCTRL}, KEY_V};
        case controlShiftV:
            return {{KEY_LEFTCTRL, KEY_LEFTSHIFT}, KEY_V};
        case controlAltV:
            return {{KEY_LEFTCTRL, KEY_LEFTALT}, KEY_V};
        case shiftInsert:
            return {{KEY_LEFTSHIFT}, KEY_INSERT};
        case controlShiftInsert:
            return {{KEY_LEFTCTRL, KEY_LEFTSHIFT}, KEY_INSERT};
        case none:
            break;
    }
    return {};
}

}  // namespace quorvi
