#include "Quorvi/platform/linux/wayland/input/VirtualKeyboardPoster.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace quorvi {
namespace {

struct Chord {
    std::vector<std::pair<std::uint32_t, VirtualKeyboard::Modifier>> modifiers;
    std::uint32_t key = 0;
};

Chord keysOf(PasteChord chord) {
    using enum PasteChord;
    const std::pair control{std::uint32_t{KEY_LEFTCTRL}, VirtualKeyboard::control};
    const std::pair shift{std::uint32_t{KEY_LEFTSHIFT}, VirtualKeyboard::shift};
    const std::pair alt{std::uint32_t{KEY_LEFTALT}, VirtualKeyboard::alt};
    switch (chord) {
        case controlV:
            return {{control}, KEY_V};
        case controlShiftV:
            return {{control, shift}, KEY_V};
        case controlAltV:
            return {{control, alt}, KEY_V};
        case shiftInsert:
            return {{shift}, KEY_INSERT};
        case controlShiftInsert:
            return {{control, shift}, KEY_INSERT};
        case none:
            break;
    }
    return {};
}

void play(VirtualKeyboard& keyboard, const Chord& chord) {
    std::uint32_t held = 0;
    for (const auto& [key, modifier] : chord.modifiers) {
        keyboard.key(key, true);
        keyboard.modifiers(held |= modifier);
    }
    keyboard.key(chord.key, true);
    keyboard.key(chord.key, false);
    for (auto modifier = chord.modifiers.rbegin(); modifier != chord.modifiers.rend(); ++modifier) {
        keyboard.key(modifier->first, false);
        keyboard.modifiers(held &= ~static_cast<std::uint32_t>(modifier->second));
    }
}

}  // namespace

VirtualKeyboardPoster::VirtualKeyboardPoster(WaylandInput& input,
                                             std::function<std::string()> activeClass)
    : input_(input), activeClass_(std::move(activeClass)) {}

PasteChords::Choice VirtualKeyboardPoster::choice() const {
    const auto name = activeClass_();
    return chords_.of(name, name);
}

Task<bool> VirtualKeyboardPoster::looksBeforePasting(pid_t, std::stop_token) {
    co_return choice().looksFirst;
}

void VirtualKeyboardPoster::post(std::span<const TapEvent> events, pid_t) {
    const bool pastes = std::ranges::any_of(events, [](const TapEvent& event) {
        return event.type == TapEventType::keyDown && event.keyCode == keyCode::v &&
               (event.flags & modifierFlag::command) != 0;
    });
    const auto chord = keysOf(choice().chord);
    if (!pastes || chord.key == 0) return;
    input_.run([chord](WaylandInput::Session* session) {
        if (!session) return;
        auto& keyboard = session->pasting;
        if (!keyboard) {
            keyboard = std::make_unique<VirtualKeyboard>(session->connection);
            keyboard->useUsLayout();
        }
        play(*keyboard, chord);
    });
}

}  // namespace quorvi
