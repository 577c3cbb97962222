#include "Quorvi/app/composition/WaylandAdapters.h"

#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

#include "Quorvi/app/composition/StoredFiles.h"
#include "Quorvi/platform/linux/atspi/AtspiWorkspace.h"
#include "Quorvi/platform/linux/gnome/CustomShortcuts.h"
#include "Quorvi/platform/linux/ibus/IbusCommitter.h"
#include "Quorvi/platform/linux/kde/KGlobalAccelShortcuts.h"
#include "Quorvi/platform/linux/keyboard/NoKeyEventPoster.h"
#include "Quorvi/platform/linux/portal/PortalShortcuts.h"
#include "Quorvi/platform/linux/remote/RemoteDesktopPoster.h"
#include "Quorvi/platform/linux/remote/RemoteDesktopProbe.h"
#include "Quorvi/platform/linux/shortcuts/NoShortcuts.h"
#include "Quorvi/platform/linux/shortcuts/ShortcutKeyEventTap.h"
#include "Quorvi/platform/linux/wayland/clipboard/DataControlPasteboard.h"
#include "Quorvi/platform/linux/wayland/commit/InputMethodCommitter.h"
#include "Quorvi/platform/linux/wayland/input/FakeInputPoster.h"
#include "Quorvi/platform/linux/wayland/input/VirtualKeyboardPoster.h"
#include "Quorvi/platform/linux/wayland/kwin/PlasmaWorkspace.h"
#include "Quorvi/platform/linux/wayland/sway/SwayKeyEventTap.h"
#include "Quorvi/platform/linux/wayland/sway/SwayWorkspace.h"
#include "Quorvi/platform/linux/x11/clipboard/X11Pasteboard.h"

namespace quorvi {
namespace {

constexpr Duration portalStart = std::chrono::seconds(3);

}  // namespace

WaylandAdapters::WaylandAdapters(const DesktopCapabilities& capabilities, Scheduler& scheduler,
                                 std::string clipboardKeeper, std::function<void()> tapChanged)
    : capabilities_(capabilities), scheduler_(scheduler) {
    if (capabilities_.hasVirtualKeyboard || capabilities_.hasInputMethod ||
        capabilities_.hasFakeInput)
        input_.emplace();
    makeWorkspace();
    makeTap(std::move(tapChanged), clipboardKeeper);
    makePoster();
    makeCommitter();
    makePasteboard(std::move(clipboardKeeper));
}

WaylandAdapters::~WaylandAdapters() = default;

bool WaylandAdapters::inputHookIsPossible() const {
    return !input_ || input_->isAlive();
}

void WaylandAdapters::makeWorkspace() {
    const auto use = [this](auto workspace) {
        frontmostClass_ = [&it = *workspace] { return it.frontmostClass(); };
        workspace_ = std::move(workspace);
    };
    if (capabilities_.hasSway) return use(std::make_unique<SwayWorkspace>(scheduler_));
    if (capabilities_.hasPlasmaWindows) return use(std::make_unique<PlasmaWorkspace>(scheduler_));
    use(std::make_unique<AtspiWorkspace>(scheduler_));
}

void WaylandAdapters::makeTap(std::function<void()> changed, const std::string& keeper) {
    if (capabilities_.hasSway) {
        tap_ = std::make_unique<SwayKeyEventTap>(scheduler_, *input_, std::move(changed));
        return;
    }
    auto tap = std::make_unique<ShortcutKeyEventTap>(
        scheduler_, makeShortcuts(keeper), std::move(changed),
        [this](KeyCode modifier) { return input_ && input_->isHeld(modifier); });
    shortcut_ = tap.get();
    tap_ = std::move(tap);
}

// The helpers are in one folder.
std::unique_ptr<ShortcutSource> WaylandAdapters::makeShortcuts(const std::string& keeper) {
    const auto helper = std::filesystem::path(keeper).replace_filename("quorvi-shortcut");
    std::error_code unknown;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", unknown);
    if (capabilities_.hasKdeShortcuts)
        return std::make_unique<KGlobalAccelShortcuts>(scheduler_, helper, program);
    if (capabilities_.hasShortcutsPortal)
        return std::make_unique<PortalShortcuts>(scheduler_, capabilities_.hasCustomShortcuts);
    if (!capabilities_.hasCustomShortcuts) return std::make_unique<NoShortcuts>();
    return std::make_unique<CustomShortcuts>(scheduler_, helper, program);
}

void WaylandAdapters::makePoster() {
    std::unique_ptr<ChordPoster> poster;
    if (capabilities_.hasVirtualKeyboard) {
        poster = std::make_unique<VirtualKeyboardPoster>(*input_, frontmostClass_);
    } else if (capabilities_.hasFakeInput) {
        poster = std::make_unique<FakeInputPoster>(*input_, frontmostClass_);
    } else if (capabilities_.hasRemoteDesktop || capabilities_.hasMutterRemoteDesktop) {
        using Way = RemoteDesktopPoster::Way;
        auto remote = std::make_unique<RemoteDesktopPoster>(
            scheduler_,
            [isKnown = capabilities_.hasRemoteDesktop] {
                // A portal that is still being started has not answered the probe.
                return isKnown || hasRememberingRemoteDesktop(portalStart) ? Way::portal
                                                                           : Way::mutter;
            },
            keyConsentFile(), frontmostClass_);
        keyConsent_ = remote.get();
        poster = std::move(remote);
    } else {
        poster_ = std::make_unique<NoKeyEventPoster>();
        setPasteChords_ = [](const PasteChords&) {};
        return;
    }
    setPasteChords_ = [&keyboard = *poster](PasteChords chords) {
        keyboard.setPasteChords(std::move(chords));
    };
    poster_ = std::move(poster);
}

void WaylandAdapters::makeCommitter() {
    if (capabilities_.hasInputMethod)
        committer_ = std::make_unique<InputMethodCommitter>(scheduler_, *input_);
    else if (capabilities_.hasIbus)
        committer_ = std::make_unique<IbusCommitter>(scheduler_);
}

void WaylandAdapters::makePasteboard(std::string keeper) {
    // GNOME has no other way to its clipboard than that of its X11 programs.
    if (capabilities_.hasClipboard)
        pasteboard_ = std::make_unique<DataControlPasteboard>(scheduler_, std::move(keeper));
    else
        pasteboard_ = std::make_unique<X11Pasteboard>(
            scheduler_, X11Pasteboard::Options{.keeper = std::move(keeper)});
}

}  // namespace quorvi
