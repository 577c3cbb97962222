#include "Quorvi/dictation/ShortcutChoice.h"

namespace quorvi {

std::vector<Hotkey> ShortcutChoice::proposals() const {
    if (desktop().hasLoneModifiers)
        return {Hotkey::rightOption, Hotkey::leftControl, Hotkey::rightControl};
    return {Hotkey::f9, Hotkey::f8, Hotkey::commandShiftSpace};
}

bool ShortcutChoice::suits(const Hotkey& shortcut) const {
    return !shortcut.isModifier() || desktop().hasLoneModifiers;
}

Message ShortcutChoice::unsuitable() const {
    return desktop().hasLoneModifiers ? say::unsuitableShortcut() : say::noLoneModifiers();
}

std::optional<Message> ShortcutChoice::problem(const Hotkey& shortcut) const {
    const auto state = desktop();
    if (!state.isOffered) return std::nullopt;
    if (!suits(shortcut)) return say::noLoneModifiers();
    if (!state.takenBy.empty()) return say::shortcutTaken(state.takenBy);
    if (state.needsListing && !state.isListed) return say::shortcutNotListed();
    if (!state.isInForce) return say::shortcutNotInForce();
    return std::nullopt;
}

}  // namespace quorvi
