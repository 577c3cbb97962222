#include "Quorvi/platform/linux/x11/keyboard/X11PasteChord.h"

#define explicit explicitComponents  // the XKB header names a field with a C++ keyword
#include <xcb/xkb.h>
#undef explicit

#include <algorithm>
#include <cctype>
#include <fstream>
#include <string>
#include <string_view>

namespace quorvi {
namespace {

enum class ChordKind { controlV, controlShiftV, controlAltV };

constexpr std::uint32_t symbolV = 'v';
constexpr KeyCode insertKeyCode = 114;  // a Mac's Help key

// Programs in which Control-V belongs to the program that runs inside. XTerm is among them for want
// of anything better: as delivered it has no key that pastes the clipboard (Shift-Insert pastes the
// selection, which is other text and might be run as a command), and people who give it one
// choose this chord.
constexpr std::string_view terminals[] = {
    "alacritty",
    "cool-retro-term",
    "deepin-terminal",
    "foot",
    "ghostty",
    "gnome-terminal",
    "guake",
    "kgx",
    "kitty",
    "konsole",
    "lxterminal",
    "mate-terminal",
    "org.gnome.console",
    "org.gnome.ptyxis",
    "ptyxis",
    "org.wezfurlong.wezterm",
    "qterminal",
    "sakura",
    "st-256color",
    "st",
    "terminator",
    "terminology",
    "termite",
    "tilda",
    "tilix",
    "uxterm",
    "wezterm",
    "wezterm-gui",
    "x-terminal-emulator",
    "xfce4-terminal",
    "xterm",
    "yakuake",
};

std::string lowered(std::string_view text) {
    std::string result(text);
    for (auto& c : result) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return result;
}

// Both parts of the window's class, instance first; empty when it has none.
std::vector<std::string> activeWindowClass(const X11Connection& connection) {
    auto* c = connection.get();
    const auto activeAtom = connection.atom("_NET_ACTIVE_WINDOW");
    const auto activeCookie =
        xcb_get_property(c, 0, connection.root(), activeAtom, XCB_ATOM_WINDOW, 0, 1);
    const auto active = ownXcb(xcb_get_property_reply(c, activeCookie, nullptr));
    if (!active || xcb_get_property_value_length(active.get()) < 4) return {};
    const auto window = *static_cast<const xcb_window_t*>(xcb_get_property_value(active.get()));
    const auto classCookie =
        xcb_get_property(c, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 256);
    const auto reply = ownXcb(xcb_get_property_reply(c, classCookie, nullptr));
    if (!reply) return {};
    const auto* text = static_cast<const char*>(xcb_get_property_value(reply.get()));
    const std::string_view all(
        text, static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    const auto end = all.find('\0');
    if (end == std::string_view::npos) return {lowered(all)};
    auto second = all.substr(end + 1);
    second = second.substr(0, second.find('\0'));
    return {lowered(all.substr(0, end)), lowered(second)};
}

std::string commandOf(pid_t pid) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/comm");
    std::string name;
    std::getline(file, name);
    return lowered(name);
}

ChordKind chordKind(const X11Connection& connection, pid_t pid) {
    auto names = activeWindowClass(connection);
    if (names.empty()) names = {commandOf(pid)};
    for (const auto& name : names) {
        if (name == "urxvt" || name == "rxvt-unicode") return ChordKind::controlAltV;
        if (std::find(std::begin(terminals), std::end(terminals), name) != std::end(terminals))
            return ChordKind::controlShiftV;
    }
    return ChordKind::controlV;
}

int currentGroup(const X11Connection& connection) {
    const auto cookie = xcb_xkb_get_state(connection.get(), XCB_XKB_ID_USE_CORE_KBD);
    const auto state = ownXcb(xcb_xkb_get_state_reply(connection.get(), cookie, nullptr));
    return state ? state->group : 0;
}

}  // namespace

X11PasteChord X11PasteChord::forActiveApplication(const X11Connection& connection,
                                                  const X11Layout& layout, pid_t pid) {
    const auto kind = chordKind(connection, pid);
    const auto control = layout.keycodeFor(keyCode::leftControl);
    const auto shift = layout.keycodeFor(keyCode::leftShift);
    const auto key = layout.keyTyping(symbolV, currentGroup(connection));
    if (kind == ChordKind::controlV && !key) {
        // A lone Greek or Cyrillic layout: GTK finds no V in any group, so Control with the key in
        // V's place does nothing there. All toolkits paste the clipboard with Shift-Insert, too.
        return {{shift}, layout.keycodeFor(insertKeyCode)};
    }
    X11PasteChord chord{{control}, key.value_or(positionOfKeyCode(keyCode::v))};
    if (kind == ChordKind::controlShiftV) chord.modifiers.push_back(shift);
    if (kind == ChordKind::controlAltV)
        chord.modifiers.push_back(layout.keycodeFor(keyCode::leftOption));
    return chord;
}

}  // namespace quorvi
