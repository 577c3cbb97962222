#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "Quorvi/platform/linux/xkb/KeyMap.h"

namespace quorvi {

// The server's keyboard layout at one moment: what each key types in each group, and the X modifier
// bit of each modifier key. A plain value, for adapter sources.
class X11Layout {
public:
    // The default before fetch(): key codes by position, no modifiers.
    X11Layout();

    // Asks the server; the XKB extension must be in use on this connection. Returns nullopt if the
    // connection is lost.
    static std::optional<X11Layout> fetch(const X11Connection& connection);

    // The key's code by its position, or that of the key which the user has made of it (Caps Lock
    // as Control, swapped Alt and Super).
    KeyCode keyCodeOf(XKeycode keycode) const { return codes_[keycode]; }

    bool isCapsLock(XKeycode keycode) const;

    // Whether programs take a lone press of this key for a call of their menu: Alt, Meta or Super,
    // but not where the layout has made AltGr or Compose of it.
    bool opensMenus(XKeycode keycode) const;

    // Whether the key is AltGr in any of the groups.
    bool shiftsLevels(XKeycode keycode) const;

    // A key that types nothing and changes nothing. nullopt if the layout uses all of them.
    std::optional<XKeycode> silentKey() const;

    // A key that acts as `keyCode`; preferably the one at its own position.
    XKeycode keycodeFor(KeyCode keyCode) const;
    std::vector<XKeycode> keycodesFor(KeyCode keyCode) const;

    // The key that types `symbol` without modifiers in `group`, or else in any other group, through
    // which applications resolve such a chord.
    std::optional<XKeycode> keyTyping(std::uint32_t symbol, int group) const;

    // Whether the key types `symbol` without modifiers in `group` itself.
    bool types(XKeycode keycode, std::uint32_t symbol, int group) const {
        return keys_[keycode].plainSymbol(group) == symbol;
    }

    // All X modifier states that mean exactly these standard modifiers, without the locks. Option
    // has several if the right Alt key sets another bit than the left one.
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
