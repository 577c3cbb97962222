#include "Quorvi/platform/linux/x11/keyboard/X11PasteChord.h"

#define explicit explicitComponents  // the XKB header names a field with a C++ keyword
#include <xcb/xkb.h>
#undef explicit

#include <algorithm>
#include <string>
#include <string_view>

#include "Quorvi/platform/linux/posix/ProcessName.h"
#include "Quorvi/platform/linux/x11/X11ActiveWindow.h"
#include "QuorviCore/text/Utf8Bytes.h"

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

std::string lowered(std::string name) {
    std::ranges::transform(name, name.begin(), text::asciiLower);
    return name;
}

ChordKind chordKind(const X11Connection& connection, pid_t pid) {
    const auto window = x11WindowClass(connection, x11ActiveWindow(connection));
    const auto names = window.isEmpty() ? std::vector{processName(pid)}
                                        : std::vector{window.instance, window.name};
    for (const auto& each : names) {
        const auto name = lowered(each);
        if (name == "urxvt" || name == "rxvt-unicode") return ChordKind::controlAltV;
        if (std::find(std::begin(terminals), std::end(terminals), name) != std::end(terminals))
            return ChordKind::controlShiftV;
    }
    return ChordKind::controlV;
}

int currentGroup(const X11Connection& connection) {
    const auto state = connection.reply<xcb_xkb_get_state_reply>(
        xcb_xkb_get_state(connection.get(), XCB_XKB_ID_USE_CORE_KBD));
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
