#include "Quorvi/app/composition/DisplayAdapters.h"

#include <utility>

#include "Quorvi/app/composition/WaylandAdapters.h"
#include "Quorvi/platform/linux/x11/clipboard/X11Pasteboard.h"
#include "Quorvi/platform/linux/x11/desktop/X11Workspace.h"
#include "Quorvi/platform/linux/x11/keyboard/X11InputSupport.h"
#include "Quorvi/platform/linux/x11/keyboard/X11KeyEventPoster.h"
#include "Quorvi/platform/linux/x11/keyboard/X11KeyEventTap.h"

namespace quorvi {
namespace {

class X11Adapters final : public DisplayAdapters {
public:
    X11Adapters(Scheduler& scheduler, std::string clipboardKeeper)
        : tap_(scheduler),
          poster_(tap_),
          workspace_(scheduler),
          pasteboard_(scheduler, {.keeper = std::move(clipboardKeeper)}) {}

    KeyEventTap& tap() override { return tap_; }
    KeyEventPoster& poster() override { return poster_; }
    Workspace& workspace() override { return workspace_; }
    ThreadedPasteboard& pasteboard() override { return pasteboard_; }
    void setPasteChords(PasteChords chords) override { tap_.setPasteChords(std::move(chords)); }
    bool inputHookIsPossible() const override { return x11InputHookIsPossible(); }

private:
    X11KeyEventTap tap_;
    X11KeyEventPoster poster_;
    X11Workspace workspace_;
    X11Pasteboard pasteboard_;
};

}  // namespace

std::unique_ptr<DisplayAdapters> DisplayAdapters::make(const DesktopCapabilities& capabilities,
                                                       Scheduler& scheduler,
                                                       std::string clipboardKeeper,
                                                       std::function<void()> tapChanged) {
    if (capabilities.isNative())
        return std::make_unique<WaylandAdapters>(capabilities, scheduler,
                                                 std::move(clipboardKeeper), std::move(tapChanged));
    return std::make_unique<X11Adapters>(scheduler, std::move(clipboardKeeper));
}

}  // namespace quorvi
