#include "Quorvi/insertion/PasteKeyboard.h"

#include <algorithm>

#include "QuorviCore/Error.h"

namespace quorvi {

bool PasteKeyboard::physicalModifiersArePressed(const std::function<bool(KeyCode)>& readKey) {
    return std::ranges::any_of(modifierKeys, readKey);
}

std::array<TapEvent, 4> PasteKeyboard::pasteEvents(const KeyEventPoster& poster) {
    if (!poster.isAvailable()) throw QuorviError::message(say::couldNotPaste());
    constexpr auto command = modifierFlag::command;
    constexpr auto marker = quorviPasteEventMarker;
    return {{
        {TapEventType::flagsChanged, keyCode::leftCommand, 0, command, marker},
        {TapEventType::keyDown, keyCode::v, 0, command, marker},
        {TapEventType::keyUp, keyCode::v, 0, command, marker},
        {TapEventType::flagsChanged, keyCode::leftCommand, 0, 0, marker},
    }};
}

}  // namespace quorvi
