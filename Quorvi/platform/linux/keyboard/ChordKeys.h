#pragma once

#include <cstdint>
#include <vector>

#include "Quorvi/platform/linux/keyboard/PasteChords.h"
#include "Quorvi/platform/linux/xkb/KeymapText.h"

namespace quorvi {

// The keys of a combination on a US keyboard, as Linux counts them. A plain value.
struct ChordKeys {
    std::vector<std::uint32_t> modifiers;  // left Control, Shift and Alt, in the order of pressing
    std::uint32_t key = 0;                 // 0: no combination

    static ChordKeys of(PasteChord chord);

    // On the key that types V in the layout's first group. Programs also find a V of other groups,
    // which desktops add to a layout without one; where there is none, Shift-Insert.
    ChordKeys placedIn(const KeymapText& layout) const;
};

}  // namespace quorvi
