#include "QuorviCore/shortcut/Gestures.h"

#include <utility>

namespace quorvi {

using Gesture = ModifierHotkeyGesture;

Gesture::Action Gesture::press(bool eligible, DictationMode mode) {
    if (!eligible) return phase == Phase::idle ? (phase = Phase::chord, Action::none) : chord();
    if (phase != Phase::idle) return Action::none;
    phase = Phase::pending;
    return mode == DictationMode::hold ? Action::arm : Action::none;
}

Gesture::Action Gesture::chord() {
    if (phase == Phase::idle) return Action::none;
    const bool wasActive = phase == Phase::active;
    phase = Phase::chord;
    return wasActive ? Action::cancel : Action::none;
}

Gesture::Action Gesture::holdElapsed() {
    if (phase != Phase::pending) return Action::none;
    phase = Phase::active;
    return Action::start;
}

Gesture::Action Gesture::release(DictationMode mode) {
    const auto before = std::exchange(phase, Phase::idle);
    if (before == Phase::active) return Action::finish;
    if (before == Phase::pending && mode == DictationMode::toggle) return Action::toggle;
    return Action::none;
}

std::optional<Hotkey> StandaloneModifierCapture::modifierChanged(KeyCode keyCode,
                                                                 std::uint64_t flags) {
    const auto candidate = Hotkey::standaloneModifier(keyCode);
    const auto before = std::exchange(pending, std::nullopt);
    if (!candidate) return std::nullopt;
    const auto standard = flags & Hotkey::standardModifierMask;
    if (flags & candidate->deviceModifierMask()) {
        const auto own =
            keyCode == keyCode::rightOption ? modifierFlag::option : modifierFlag::control;
        if (standard == own) pending = candidate;
        return std::nullopt;
    }
    if (before == candidate && standard == 0) return candidate;
    return std::nullopt;
}

}  // namespace quorvi
