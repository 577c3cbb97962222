#include "Quorvi/platform/linux/wayland/probe/WaylandProbe.h"

#include <cstdlib>

#include "Quorvi/platform/linux/gnome/CustomShortcutSettings.h"
#include "Quorvi/platform/linux/ibus/IbusProbe.h"
#include "Quorvi/platform/linux/kde/KGlobalAccelShortcuts.h"
#include "Quorvi/platform/linux/portal/PortalBackends.h"
#include "Quorvi/platform/linux/remote/RemoteDesktopProbe.h"
#include "Quorvi/platform/linux/wayland/WaylandConnection.h"
#include "Quorvi/platform/linux/wayland/clipboard/DataControlSession.h"
#include "Quorvi/platform/linux/wayland/input/InputMethod.h"
#include "Quorvi/platform/linux/wayland/input/VirtualKeyboard.h"
#include "Quorvi/platform/linux/wayland/kwin/FakeInput.h"
#include "Quorvi/platform/linux/wayland/kwin/PlasmaWindows.h"
#include "Quorvi/platform/linux/wayland/layershell/LayerSurface.h"
#include "Quorvi/platform/linux/wayland/sway/SwaySocket.h"

namespace quorvi {

DesktopCapabilities probeWayland() {
    // Without the variable a library would try a standard name.
    const char* display = std::getenv("WAYLAND_DISPLAY");
    if (!display || !*display) return {};
    const WaylandConnection connection;
    if (!connection.isAlive()) return {};
    const bool hasKeys = VirtualKeyboard::isOffered(connection) || FakeInput::isOffered(connection);
    return {.isWayland = true,
            .hasClipboard = DataControlSession::isOffered(connection),
            .hasVirtualKeyboard = VirtualKeyboard::isOffered(connection),
            .hasInputMethod = InputMethod::isOffered(connection),
            .hasSway = SwaySocket().isAlive(),
            .hasLayerShell = LayerSurface::isOffered(connection),
            .hasKdeShortcuts = hasKdeShortcuts(),
            .hasFakeInput = FakeInput::isOffered(connection),
            .hasPlasmaWindows = PlasmaWindows::isOffered(connection),
            .hasShortcutsPortal = desktopHasPortal("org.freedesktop.impl.portal.GlobalShortcuts"),
            .hasCustomShortcuts = CustomShortcutSettings::areInUse(),
            .hasIbus = ibusReachesFields(),
            .hasRemoteDesktop = !hasKeys && hasRememberingRemoteDesktop(),
            .hasMutterRemoteDesktop = !hasKeys && hasMutterRemoteDesktop()};
}

bool waylandInputMethodIsTaken() {
    WaylandConnection connection;
    if (!connection.isAlive() || !InputMethod::isOffered(connection)) return false;
    InputMethod method(connection);
    method.enter();
    connection.synchronise();
    return method.isUnavailable();
}

}  // namespace quorvi
