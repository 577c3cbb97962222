#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "Quorvi/platform/linux/xkb/KeyMap.h"

namespace quorvi {

// The keyboard layout in force, as the server describes it at one moment: what each key types in
// each group, and which X modifier bit each modifier key sets. A plain value, for adapter sources.
class X11Layout {
public:
    // Before anything is known: every key is what its position says, no key sets a modifier.
    X11Layout();

    // Asks the server, which must know the XKB extension on this connection. Nothing when the
    // connection fails.
    static std::optional<X11Layout> fetch(const X11Connection& connection);

    // The key's code: its position, except where the user made another key of it (Control in the
    // place of Caps Lock, swapped Alt and Super): then the key that it has been made into.
    KeyCode keyCodeOf(XKeycode keycode) const { return codes_[keycode]; }

    bool isCapsLock(XKeycode keycode) const;

    // A key that acts as `keyCode`; the one at its own position when it still does.
    XKeycode keycodeFor(KeyCode keyCode) const;
    std::vector<XKeycode> keycodesFor(KeyCode keyCode) const;

    // The key that types `symbol` without further modifiers: in the group given if there is one,
    // else in any other group. Applications resolve such a chord through that other group.
    std::optional<XKeycode> keyTyping(std::uint32_t symbol, int group) const;

    // Every X modifier state that means exactly these standard modifiers, whatever the locks.
    // Option alone has several when the right Alt key sets another bit than the left one.
    std::set<std::uint16_t> statesFor(std::uint64_t standardModifiers) const;

    std::uint16_t lockBits() const { return lockBits_; }

private:
    struct Key {
        int groups = 0;
        int width = 0;
        std::uint8_t groupInfo = 0;
        std::vector<std::uint32_t> symbols;

        std::uint32_t plainSymbol(int group) const;
    };

    void readSymbols(const void* reply);
    void readModifiers(const void* reply);

    std::array<Key, 256> keys_;
    std::array<KeyCode, 256> codes_;
    std::array<std::uint16_t, 256> bits_{};  // the X modifier bit of each key
    std::uint16_t lockBits_;
};

}  // namespace quorvi
