#include "Quorvi/platform/linux/x11/keyboard/X11PasteChord.h"

#define explicit explicitComponents  // the XKB header names a field with a C++ keyword
#include <xcb/xkb.h>
#undef explicit

#include "Quorvi/platform/linux/posix/ProcessName.h"
#include "Quorvi/platform/linux/x11/X11ActiveWindow.h"

namespace quorvi {
namespace {

constexpr std::uint32_t symbolV = 'v';
constexpr KeyCode insertKeyCode = 114;  // a Mac's Help key

int currentGroup(const X11Connection& connection) {
    const auto state = connection.reply<xcb_xkb_get_state_reply>(
        xcb_xkb_get_state(connection.get(), XCB_XKB_ID_USE_CORE_KBD));
    return state ? state->group : 0;
}

}  // namespace

PasteChords::Choice X11PasteChord::choiceForActiveApplication(const X11Connection& connection,
                                                              pid_t pid,
                                                              const PasteChords& chords) {
    const auto window = x11WindowClass(connection, x11ActiveWindow(connection));
    return window.isEmpty() ? chords.of(processName(pid), {})
                            : chords.of(window.instance, window.name);
}

X11PasteChord X11PasteChord::forActiveApplication(const X11Connection& connection,
                                                  const X11Layout& layout, pid_t pid,
                                                  const PasteChords& chords) {
    const auto choice = choiceForActiveApplication(connection, pid, chords);
    const auto control = layout.keycodeFor(keyCode::leftControl);
    const auto shift = layout.keycodeFor(keyCode::leftShift);
    const auto option = layout.keycodeFor(keyCode::leftOption);
    const auto insert = layout.keycodeFor(insertKeyCode);
    const auto group = currentGroup(connection);
    const auto found = layout.keyTyping(symbolV, group);
    const bool hasV = found && (choice.searchesGroups || layout.types(*found, symbolV, group));
    const auto v = found.value_or(positionOfKeyCode(keyCode::v));
    switch (hasV ? choice.chord : choice.withoutV) {
        case PasteChord::none:
            return {};
        case PasteChord::controlV:
            return {{control}, v};
        case PasteChord::controlShiftV:
            return {{control, shift}, v};
        case PasteChord::controlAltV:
            return {{control, option}, v};
        case PasteChord::shiftInsert:
            return {{shift}, insert};
        case PasteChord::controlShiftInsert:
            return {{control, shift}, insert};
    }
    return {};
}

}  // namespace quorvi
