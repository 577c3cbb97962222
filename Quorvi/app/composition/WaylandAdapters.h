#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Quorvi/app/composition/DisplayAdapters.h"
#include "Quorvi/platform/linux/shortcuts/ShortcutSource.h"
#include "Quorvi/platform/linux/wayland/input/WaylandInput.h"

namespace quorvi {

// The adapters on a Wayland desktop that `isNative()`. Each part is chosen by itself: the first in
// its function that the desktop offers.
class WaylandAdapters final : public DisplayAdapters {
public:
    // As DisplayAdapters::make().
    WaylandAdapters(const DesktopCapabilities& capabilities, Scheduler& scheduler,
                    std::string clipboardKeeper, std::function<void()> tapChanged);
    ~WaylandAdapters() override;

    KeyEventTap& tap() override { return *tap_; }
    DesktopShortcut* shortcut() override { return shortcut_; }
    KeyEventPoster& poster() override { return *poster_; }
    KeyConsent* keyConsent() override { return keyConsent_; }
    TextCommitter* committer() override { return committer_.get(); }
    Workspace& workspace() override { return *workspace_; }
    ThreadedPasteboard& pasteboard() override { return *pasteboard_; }
    void setPasteChords(PasteChords chords) override { setPasteChords_(std::move(chords)); }
    bool seesAllKeys() const override { return false; }
    bool inputHookIsPossible() const override;

private:
    void makeWorkspace();
    void makeTap(std::function<void()> changed, const std::string& keeper);
    std::unique_ptr<ShortcutSource> makeShortcuts(const std::string& keeper);
    void makePoster();
    void makeCommitter();
    void makePasteboard(std::string keeper);

    const DesktopCapabilities capabilities_;
    Scheduler& scheduler_;
    std::optional<WaylandInput> input_;  // with the virtual keyboard or the input method
    std::unique_ptr<Workspace> workspace_;
    std::function<std::string()> frontmostClass_;  // see PasteChords; the workspace's
    std::unique_ptr<KeyEventTap> tap_;
    DesktopShortcut* shortcut_ = nullptr;  // the tap, where the desktop keeps the keys
    std::unique_ptr<KeyEventPoster> poster_;
    KeyConsent* keyConsent_ = nullptr;                 // the poster, where it needs one
    std::function<void(PasteChords)> setPasteChords_;  // the poster's
    std::unique_ptr<TextCommitter> committer_;
    std::unique_ptr<ThreadedPasteboard> pasteboard_;
};

}  // namespace quorvi
