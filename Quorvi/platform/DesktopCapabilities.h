#pragma once

namespace quorvi {

// What this desktop offers to programs that work in others' windows, as found at the start. A
// plain value; adapters are chosen by it, never by the desktop's name.
struct DesktopCapabilities {
    bool isWayland = false;           // a Wayland compositor answers; the rest is about that
    bool hasClipboard = false;        // the clipboard without the focus
    bool hasVirtualKeyboard = false;  // keys for the focused window
    bool hasInputMethod = false;      // the keyboard while the shortcut is held; text for fields
    bool hasSway = false;             // sway's commands: shortcuts, and which window has the focus
    bool hasLayerShell = false;       // pictures above the windows

    // Whether Quorvi can work in the windows of Wayland programs, and not in those of X11 alone.
    bool isNative() const { return isWayland && hasClipboard && hasVirtualKeyboard && hasSway; }

    bool operator==(const DesktopCapabilities&) const = default;
};

}  // namespace quorvi
