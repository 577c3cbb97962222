#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Quorvi/platform/DesktopCapabilities.h"
#include "Quorvi/platform/DesktopShortcut.h"
#include "Quorvi/platform/KeyConsent.h"
#include "Quorvi/platform/KeyEventPoster.h"
#include "Quorvi/platform/KeyEventTap.h"
#include "Quorvi/platform/TextCommitter.h"
#include "Quorvi/platform/Workspace.h"
#include "Quorvi/platform/linux/clipboard/ThreadedPasteboard.h"
#include "Quorvi/platform/linux/keyboard/PasteChords.h"

namespace quorvi {

// The adapters of what draws the windows, an X server or a Wayland compositor, chosen by what it
// offers. Main thread; the scheduler outlives it.
class DisplayAdapters {
public:
    virtual ~DisplayAdapters() = default;

    // `clipboardKeeper` as in LinuxDesktop. `tapChanged` is called on any thread when an installed
    // tap has become valid.
    static std::unique_ptr<DisplayAdapters> make(const DesktopCapabilities& capabilities,
                                                 Scheduler& scheduler, std::string clipboardKeeper,
                                                 std::function<void()> tapChanged);

    virtual KeyEventTap& tap() = 0;
    virtual DesktopShortcut* shortcut() { return nullptr; }  // null: the tap sees all keys
    virtual KeyEventPoster& poster() = 0;
    virtual KeyConsent* keyConsent() { return nullptr; }    // null: the poster needs none
    virtual TextCommitter* committer() { return nullptr; }  // null where nothing takes text so
    virtual Workspace& workspace() = 0;
    virtual ThreadedPasteboard& pasteboard() = 0;
    virtual void setPasteChords(PasteChords chords) = 0;

    // Whether the tap sees what the user types into any window.
    virtual bool seesAllKeys() const { return true; }

    // Whether the tap can be installed. May wait for the display; any thread.
    virtual bool inputHookIsPossible() const = 0;
};

}  // namespace quorvi
