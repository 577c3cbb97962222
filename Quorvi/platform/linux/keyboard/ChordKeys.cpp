#include "Quorvi/platform/linux/keyboard/ChordKeys.h"

#include <linux/input-event-codes.h>

namespace quorvi {
namespace {

constexpr std::uint32_t evdevOffset = 8;

}  // namespace

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

ChordKeys ChordKeys::placedIn(const KeymapText& layout) const {
    if (key != KEY_V || layout.isEmpty()) return *this;
    if (const auto position = layout.positionOf("v")) return {modifiers, *position - evdevOffset};
    return layout.types(KEY_V + evdevOffset, "v") ? *this : of(PasteChord::shiftInsert);
}

}  // namespace quorvi
