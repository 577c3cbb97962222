#include "QuorviCore/shortcut/DictationMode.h"

namespace quorvi {

std::string_view rawValue(DictationMode mode) {
    return mode == DictationMode::hold ? "hold" : "toggle";
}

Message title(DictationMode mode) {
    return mode == DictationMode::hold ? say::modeHold() : say::modeToggle();
}

std::optional<DictationMode> dictationModeFromRawValue(std::string_view raw) {
    for (auto mode : allDictationModes)
        if (raw == rawValue(mode)) return mode;
    return std::nullopt;
}

DictationAction dictationAction(DictationMode mode, bool down, bool recording, bool busy) {
    if (busy) return DictationAction::none;
    if (mode == DictationMode::hold) {
        if (down) return recording ? DictationAction::none : DictationAction::start;
        return recording ? DictationAction::finish : DictationAction::none;
    }
    if (!down) return DictationAction::none;
    return recording ? DictationAction::finish : DictationAction::start;
}

}  // namespace quorvi
