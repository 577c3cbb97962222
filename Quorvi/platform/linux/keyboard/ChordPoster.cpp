#include "Quorvi/platform/linux/keyboard/ChordPoster.h"

#include <algorithm>

namespace quorvi {

PasteChords::Choice ChordPoster::choice() const {
    const auto name = activeClass_();
    return chords_.of(name, name);
}

Task<bool> ChordPoster::looksBeforePasting(pid_t, std::stop_token) {
    co_return choice().looksFirst;
}

void ChordPoster::post(std::span<const TapEvent> events, pid_t) {
    const bool pastes = std::ranges::any_of(events, [](const TapEvent& event) {
        return event.type == TapEventType::keyDown && event.keyCode == keyCode::v &&
               (event.flags & modifierFlag::command) != 0;
    });
    const auto keys = ChordKeys::of(choice().chord);
    if (pastes && keys.key != 0) press(keys);
}

}  // namespace quorvi
