#include "Quorvi/platform/linux/x11/keyboard/X11Layout.h"

#define explicit explicitComponents  // the XKB header names a field with a C++ keyword
#include <xcb/xkb.h>
#undef explicit

#include <algorithm>
#include <utility>

namespace quorvi {
namespace {

constexpr std::uint32_t numLockSymbol = 0xFF7F;
constexpr std::uint32_t capsLockSymbol = 0xFFE5;
constexpr std::uint32_t levelShiftSymbol = 0xFE03;  // ISO_Level3_Shift
constexpr std::uint32_t scrollLockSymbol = 0xFF14;
constexpr std::uint32_t firstMenuSymbol = 0xFFE7;  // Meta, Alt and Super, left and right
constexpr std::uint32_t lastMenuSymbol = 0xFFEC;

constexpr std::uint64_t families[] = {modifierFlag::shift, modifierFlag::control,
                                      modifierFlag::option, modifierFlag::command};

}  // namespace

X11Layout::X11Layout() : lockBits_(XCB_MOD_MASK_LOCK) {
    for (int keycode = 0; keycode < 256; ++keycode)
        codes_[static_cast<std::size_t>(keycode)] =
            keyCodeOfPosition(static_cast<XKeycode>(keycode));
}

std::optional<X11Layout> X11Layout::fetch(const X11Connection& connection) {
    auto* c = connection.get();
    const auto mapCookie = xcb_xkb_get_map(c, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_MAP_PART_KEY_SYMS, 0,
                                           0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    const auto modifierCookie = xcb_get_modifier_mapping(c);
    const auto map = connection.reply<xcb_xkb_get_map_reply>(mapCookie);
    const auto modifiers = connection.reply<xcb_get_modifier_mapping_reply>(modifierCookie);
    if (!map || !modifiers) return std::nullopt;
    X11Layout layout;
    layout.readSymbols(map.get());
    layout.readModifiers(modifiers.get());
    return layout;
}

void X11Layout::readSymbols(const void* reply) {
    const auto* map = static_cast<const xcb_xkb_get_map_reply_t*>(reply);
    // Only symbols were asked for, so they are all that follows the reply.
    xcb_xkb_key_sym_map_iterator_t all{};
    all.data = static_cast<xcb_xkb_key_sym_map_t*>(xcb_xkb_get_map_map(map));
    all.rem = map->nKeySyms;
    for (std::size_t keycode = map->firstKeySym; all.rem > 0 && keycode < 256; ++keycode) {
        auto& key = keys_[keycode];
        key.groupInfo = all.data->groupInfo;
        key.groups = all.data->groupInfo & 0x0F;
        key.width = all.data->width;
        const auto* symbols = xcb_xkb_key_sym_map_syms(all.data);
        key.symbols.assign(symbols, symbols + all.data->nSyms);
        xcb_xkb_key_sym_map_next(&all);
    }
    for (std::size_t keycode = 8; keycode < keys_.size(); ++keycode)
        codes_[keycode] =
            keyCodeOfKey(static_cast<XKeycode>(keycode), keys_[keycode].plainSymbol(0));
}

void X11Layout::readModifiers(const void* reply) {
    const auto* mapping = static_cast<const xcb_get_modifier_mapping_reply_t*>(reply);
    const auto* keycodes = xcb_get_modifier_mapping_keycodes(mapping);
    for (int modifier = 0; modifier < 8; ++modifier) {
        for (int i = 0; i < mapping->keycodes_per_modifier; ++i) {
            const auto keycode = keycodes[modifier * mapping->keycodes_per_modifier + i];
            if (keycode == 0) continue;
            const auto bit = static_cast<std::uint16_t>(1 << modifier);
            bits_[keycode] = static_cast<std::uint16_t>(bits_[keycode] | bit);
            const auto symbol = keys_[keycode].plainSymbol(0);
            if (symbol == numLockSymbol || symbol == scrollLockSymbol)
                lockBits_ = static_cast<std::uint16_t>(lockBits_ | bit);
        }
    }
}

std::uint32_t X11Layout::Key::plainSymbol(int group) const {
    if (groups == 0 || width == 0) return 0;
    if (group >= groups) {
        switch (groupInfo & 0xC0) {
            case XCB_XKB_GROUPS_WRAP_CLAMP_INTO_RANGE:
                group = groups - 1;
                break;
            case XCB_XKB_GROUPS_WRAP_REDIRECT_INTO_RANGE:
                group = (groupInfo >> 4) & 0x03;
                break;
            default:
                group %= groups;
        }
        if (group >= groups) group = 0;
    }
    const auto index = static_cast<std::size_t>(group * width);
    return index < symbols.size() ? symbols[index] : 0;
}

bool X11Layout::isCapsLock(XKeycode keycode) const {
    return keys_[keycode].plainSymbol(0) == capsLockSymbol;
}

bool X11Layout::opensMenus(XKeycode keycode) const {
    const auto symbol = keys_[keycode].plainSymbol(0);
    return symbol >= firstMenuSymbol && symbol <= lastMenuSymbol;
}

bool X11Layout::shiftsLevels(XKeycode keycode) const {
    const auto& key = keys_[keycode];
    for (int group = 0; group < key.groups; ++group)
        if (key.plainSymbol(group) == levelShiftSymbol) return true;
    return false;
}

std::optional<XKeycode> X11Layout::silentKey() const {
    // From the top, where keyboards have no keys.
    for (std::size_t keycode = keys_.size() - 2; keycode > 8; --keycode)
        if (bits_[keycode] == 0 &&
            std::ranges::all_of(keys_[keycode].symbols, [](auto symbol) { return symbol == 0; }))
            return static_cast<XKeycode>(keycode);
    return std::nullopt;
}

XKeycode X11Layout::keycodeFor(KeyCode keyCode) const {
    const auto own = positionOfKeyCode(keyCode);
    if (own != 0 && codes_[own] == keyCode) return own;
    const auto found = std::find(codes_.begin(), codes_.end(), keyCode);
    return found == codes_.end() ? own : static_cast<XKeycode>(found - codes_.begin());
}

std::vector<XKeycode> X11Layout::keycodesFor(KeyCode keyCode) const {
    std::vector<XKeycode> result;
    for (std::size_t keycode = 8; keycode < codes_.size(); ++keycode)
        if (codes_[keycode] == keyCode) result.push_back(static_cast<XKeycode>(keycode));
    return result;
}

std::optional<XKeycode> X11Layout::keyTyping(std::uint32_t symbol, int group) const {
    for (std::size_t keycode = 8; keycode < keys_.size(); ++keycode)
        if (keys_[keycode].plainSymbol(group) == symbol) return static_cast<XKeycode>(keycode);
    for (int other = 0; other < 4; ++other)
        for (std::size_t keycode = 8; keycode < keys_.size(); ++keycode)
            if (other < keys_[keycode].groups && keys_[keycode].plainSymbol(other) == symbol)
                return static_cast<XKeycode>(keycode);
    return std::nullopt;
}

std::set<std::uint16_t> X11Layout::statesFor(std::uint64_t standardModifiers) const {
    std::set<std::uint16_t> states{0};
    for (const auto family : families) {
        if ((standardModifiers & family) == 0) continue;
        std::set<std::uint16_t> bits;  // of each key of the family, and of several held together
        for (std::size_t keycode = 8; keycode < bits_.size(); ++keycode) {
            const auto bit = bits_[keycode];
            if (bit == 0 || (bit & lockBits_) != 0) continue;
            if ((flagsOfKey(codes_[keycode]) & family) == 0) continue;
            auto joined = bits;
            joined.insert(bit);
            for (const auto other : bits) joined.insert(static_cast<std::uint16_t>(other | bit));
            bits = std::move(joined);
        }
        std::set<std::uint16_t> extended;
        for (const auto state : states)
            for (const auto bit : bits) extended.insert(static_cast<std::uint16_t>(state | bit));
        states = std::move(extended);
    }
    return states;
}

}  // namespace quorvi
