#include "Quorvi/platform/linux/wayland/input/VirtualKeyboardPoster.h"

#include <linux/input-event-codes.h>

#include <memory>

namespace quorvi {
namespace {

std::uint32_t modifierOf(std::uint32_t key) {
    switch (key) {
        case KEY_LEFTCTRL:
            return VirtualKeyboard::control;
        case KEY_LEFTSHIFT:
            return VirtualKeyboard::shift;
        default:
            return VirtualKeyboard::alt;
    }
}

void play(VirtualKeyboard& keyboard, const ChordKeys& chord) {
    std::uint32_t held = 0;
    for (const auto modifier : chord.modifiers) {
        keyboard.key(modifier, true);
        keyboard.modifiers(held |= modifierOf(modifier));
    }
    keyboard.key(chord.key, true);
    keyboard.key(chord.key, false);
    for (auto modifier = chord.modifiers.rbegin(); modifier != chord.modifiers.rend(); ++modifier) {
        keyboard.key(*modifier, false);
        keyboard.modifiers(held &= ~modifierOf(*modifier));
    }
}

}  // namespace

void VirtualKeyboardPoster::press(const ChordKeys& keys) {
    input_.run([keys](WaylandInput::Session* session) {
        if (!session) return;
        auto& keyboard = session->pasting;
        if (!keyboard) {
            keyboard = std::make_unique<VirtualKeyboard>(session->connection);
            keyboard->useUsLayout();
        }
        play(*keyboard, keys);
    });
}

}  // namespace quorvi
