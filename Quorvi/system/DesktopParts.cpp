#include "Quorvi/system/DesktopParts.h"

#include <string>
#include <utility>

namespace quorvi {
namespace {

struct Way {
    bool isOffered;
    const char* name;
};

// By the first way that is offered, in the order in which the adapters are chosen.
DesktopPart part(Message subject, std::initializer_list<Way> ways,
                 std::optional<Message> consequence = std::nullopt) {
    std::string missing;
    for (const auto& way : ways) {
        if (way.isOffered)
            return {std::move(subject), say::desktopOffers(way.name), true, std::nullopt};
        missing += (missing.empty() ? "" : ", ") + std::string(way.name);
    }
    return {std::move(subject), say::desktopLacks(missing), false, std::move(consequence)};
}

DesktopPart pasting(const DesktopCapabilities& d, bool keysAreAllowed) {
    const bool needsNoLeave = d.hasVirtualKeyboard || d.hasFakeInput;
    auto result = part(say::partPasting(),
                       {{d.hasVirtualKeyboard, "zwp_virtual_keyboard_v1"},
                        {d.hasFakeInput, "org_kde_kwin_fake_input"},
                        {d.hasRemoteDesktop, "org.freedesktop.portal.RemoteDesktop"},
                        {d.hasMutterRemoteDesktop, "org.gnome.Mutter.RemoteDesktop"}},
                       say::noPastingOffered());
    if (result.isOffered && !needsNoLeave && !keysAreAllowed) {
        result.isOffered = false;
        result.consequence = say::keysNotAllowed();
    }
    return result;
}

}  // namespace

std::vector<DesktopPart> describe(const DesktopCapabilities& desktop, bool keysAreAllowed) {
    if (!desktop.isWayland) return {};
    const auto& d = desktop;
    return {
        part(say::partShortcut(),
             {{d.hasSway, "sway"},
              {d.hasKdeShortcuts, "KGlobalAccel"},
              {d.hasShortcutsPortal, "org.freedesktop.portal.GlobalShortcuts"},
              {d.hasCustomShortcuts, "GNOME's settings"}},
             say::noShortcutOffered()),
        part(say::partText(), {{d.hasInputMethod, "zwp_input_method_v2"}, {d.hasIbus, "IBus"}},
             say::noTextOffered()),
        pasting(d, keysAreAllowed),
        part(say::partClipboard(), {{d.hasClipboard, "zwlr_data_control_v1"}},
             say::noClipboardOffered()),
        part(say::partWindows(), {{d.hasSway, "sway"},
                                  {d.hasPlasmaWindows, "org_kde_plasma_window_management"},
                                  {true, "AT-SPI"}}),
        part(say::partIndicator(), {{d.hasLayerShell, "zwlr_layer_shell_v1"}},
             say::noIndicatorOffered()),
    };
}

}  // namespace quorvi
