#include "QuorviCore/shortcut/DictationMode.h"

namespace quorvi {

std::string_view rawValue(DictationMode mode) {
    return mode == DictationMode::hold ? "hold" : "toggle";
}

std::string_view title(DictationMode mode) {
    return mode == DictationMode::hold ? "Hold to talk" : "Press to toggle";
}

std::string_view instruction(DictationMode mode) {
    return mode == DictationMode::hold ? "Hold your shortcut while speaking. Release to insert."
                                       : "Press your shortcut to start. Press again to insert.";
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

std::string shortcutInstruction(const Hotkey& shortcut, DictationMode mode) {
    if (!shortcut.isModifier()) return std::string(instruction(mode));
    if (mode == DictationMode::toggle)
        return "Press and release " + shortcut.label +
               " alone to start; repeat to insert. Combinations with other keys stay available.";
    return "Hold " + shortcut.label +
           " alone for a moment (0.3 s), then speak after the sound or Listening indicator. "
           "Release to insert. Combinations with other keys stay available.";
}

}  // namespace quorvi
