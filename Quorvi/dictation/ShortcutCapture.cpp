#include "Quorvi/dictation/ShortcutCapture.h"

#include <utility>

namespace quorvi {

void ShortcutCapture::begin() {
    end();
    isOn_ = true;
    hotkey_.setSuspended(true);
    modifier_ = {};
    monitor_ = keys_.observe([this](const LocalKeyEvent& event) { return handle(event); });
    changed();
}

void ShortcutCapture::end() {
    monitor_ = {};
    hotkey_.setSuspended(false);
    hasRefused_ = false;
    if (std::exchange(isOn_, false)) changed();
}

bool ShortcutCapture::handle(const LocalKeyEvent& event) {
    const bool isModifier = event.type == LocalKeyEvent::Type::flagsChanged;
    if (!isModifier && event.keyCode == keyCode::escape) {
        end();
        return true;
    }
    auto chosen = isModifier ? modifier_.modifierChanged(event.keyCode, event.flags)
                             : Hotkey::keyCombination(event.keyCode, event.flags, event.characters);
    const bool isRefused = chosen && suits && !suits(*chosen);
    if (chosen && !isRefused) {
        if (onChosen) onChosen(*std::move(chosen));
        end();
        return true;
    }
    if (isModifier && !isRefused) return false;
    hasRefused_ = true;
    if (onRefused) onRefused();
    changed();
    return true;
}

}  // namespace quorvi
