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
    bool hasKdeShortcuts = false;     // KGlobalAccel
    bool hasFakeInput = false;        // KWin's keys for the focused window
    bool hasPlasmaWindows = false;    // KWin's list of windows
    bool hasShortcutsPortal = false;  // a portal for shortcuts whose backend is this desktop's
    bool hasCustomShortcuts = false;  // GNOME's shortcuts that run a command
    bool hasIbus = false;             // IBus gives text to fields
    bool hasRemoteDesktop = false;    // a portal for keys, which asks the user once
    bool hasMutterRemoteDesktop = false;  // GNOME's own way to press keys, which asks nothing

    // Whether the shortcut works in all windows.
    bool hasShortcut() const {
        return hasSway || hasKdeShortcuts || hasShortcutsPortal || hasCustomShortcuts;
    }
    // Whether text can be put into the windows of Wayland programs.
    bool hasInsertion() const {
        return (hasClipboard && (hasVirtualKeyboard || hasFakeInput)) || hasIbus ||
               hasRemoteDesktop || hasMutterRemoteDesktop;
    }
    // Whether Quorvi can work in the windows of Wayland programs, and not in those of X11 alone.
    // Without a shortcut it is told by commands that the user binds.
    bool isNative() const { return isWayland && hasInsertion(); }

    bool operator==(const DesktopCapabilities&) const = default;
};

}  // namespace quorvi
