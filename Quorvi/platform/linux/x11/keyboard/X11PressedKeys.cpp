#include "Quorvi/platform/linux/x11/keyboard/X11PressedKeys.h"

#include <bit>

namespace quorvi {
namespace {

// Calls `visit` with each key that is down.
template <class Keys, class Visit>
void forEachDown(const Keys& keys, Visit visit) {
    for (std::size_t word = 0; word < keys.size(); ++word) {
        for (auto bits = keys[word].load(std::memory_order_relaxed); bits != 0; bits &= bits - 1)
            visit(word * 64 + static_cast<std::size_t>(std::countr_zero(bits)));
    }
}

}  // namespace

X11PressedKeys::X11PressedKeys() {
    for (std::size_t keycode = 0; keycode < codes_.size(); ++keycode)
        codes_[keycode] = keyCodeOfPosition(static_cast<XKeycode>(keycode));
}

bool X11PressedKeys::keyIsDown(KeyCode keyCode) const {
    bool down = false;
    forEachDown(keys_, [&](std::size_t keycode) { down = down || codes_[keycode] == keyCode; });
    return down;
}

bool X11PressedKeys::buttonIsDown(std::int64_t button) const {
    return button >= 0 && button < 64 && (buttons_.load() >> button & 1) != 0;
}

void X11PressedKeys::setCode(XKeycode keycode, KeyCode keyCode) {
    codes_[keycode] = keyCode;
}

void X11PressedKeys::change(XKeycode keycode, bool down, std::uint32_t time,
                            std::uint32_t sequence) {
    const auto bit = std::uint64_t{1} << (keycode % 64);
    auto& word = keys_[keycode / 64];
    down ? word.fetch_or(bit) : word.fetch_and(~bit);
    if (down) pressTimes_[keycode] = time;
    sequences_[keycode] = sequence;
}

void X11PressedKeys::changeButton(std::int64_t button, bool down, std::uint32_t sequence) {
    if (button < 0 || button >= 64) return;
    const auto bit = std::uint64_t{1} << button;
    down ? buttons_.fetch_or(bit) : buttons_.fetch_and(~bit);
    buttonSequence_ = sequence;
}

bool X11PressedKeys::isDown(XKeycode keycode) const {
    return (keys_[keycode / 64].load(std::memory_order_relaxed) >> (keycode % 64) & 1) != 0;
}

bool X11PressedKeys::anythingIsDown() const {
    auto bits = buttons_.load(std::memory_order_relaxed);
    for (const auto& word : keys_) bits |= word.load(std::memory_order_relaxed);
    return bits != 0;
}

bool X11PressedKeys::isOnlyKeyDown(XKeycode keycode) const {
    bool only = true;
    forEachDown(keys_, [&](std::size_t other) { only = only && other == keycode; });
    return only && isDown(keycode);
}

std::uint64_t X11PressedKeys::flags() const {
    std::uint64_t flags = 0;
    forEachDown(keys_, [&](std::size_t keycode) {
        flags |= flagsOfKey(codes_[keycode].load(std::memory_order_relaxed));
    });
    return flags;
}

void X11PressedKeys::reconcile(const std::uint8_t (&keymap)[32], bool anyButton,
                               std::uint32_t sequence) {
    for (std::size_t keycode = 8; keycode < 256; ++keycode) {
        const bool down = (keymap[keycode / 8] >> (keycode % 8) & 1) != 0;
        const auto key = static_cast<XKeycode>(keycode);
        if (down == isDown(key) || isAfter(sequences_[keycode], sequence)) continue;
        change(key, down, 0, sequence);
    }
    // The server reports buttons after the user's button mapping and only the first five, events
    // report them before it: only "none is down" means the same in both.
    if (!anyButton && !isAfter(buttonSequence_, sequence)) {
        constexpr std::uint64_t reportedButtons = 0b111;
        buttons_.fetch_and(~reportedButtons);
    }
}

bool X11PressedKeys::isAfter(std::uint32_t sequence, std::uint32_t other) {
    // An event carries the number of the last request before it; numbers wrap around.
    return static_cast<std::int32_t>(sequence - other) >= 0;
}

}  // namespace quorvi
