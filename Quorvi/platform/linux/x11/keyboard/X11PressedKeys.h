#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "Quorvi/platform/linux/xkb/KeyMap.h"

namespace quorvi {

// Which keys and mouse buttons are down. Written by the input thread; keyIsDown() and
// buttonIsDown() are for any thread and take no lock.
class X11PressedKeys {
public:
    X11PressedKeys();

    bool keyIsDown(KeyCode keyCode) const;
    bool buttonIsDown(std::int64_t button) const;

    // The rest is for the input thread.
    void setCode(XKeycode keycode, KeyCode keyCode);
    void change(XKeycode keycode, bool down, std::uint32_t time, std::uint32_t sequence);
    void changeButton(std::int64_t button, bool down, std::uint32_t sequence);

    bool isDown(XKeycode keycode) const;
    bool anythingIsDown() const;
    bool isOnlyKeyDown(XKeycode keycode) const;

    // The server time of the last press; the same in all events of one press.
    std::uint32_t pressTime(XKeycode keycode) const { return pressTimes_[keycode]; }

    // The flag bits of the held keys.
    std::uint64_t flags() const;

    // Adopts the server's state as of request `sequence`, except for keys with later events.
    void reconcile(const std::uint8_t (&keymap)[32], bool anyButton, std::uint32_t sequence);

private:
    static bool isAfter(std::uint32_t sequence, std::uint32_t other);

    std::array<std::atomic<std::uint64_t>, 4> keys_{};
    std::atomic<std::uint64_t> buttons_{0};
    std::array<std::atomic<KeyCode>, 256> codes_;
    std::array<std::uint32_t, 256> pressTimes_{};
    std::array<std::uint32_t, 256> sequences_{};
    std::uint32_t buttonSequence_ = 0;
};

}  // namespace quorvi
