#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>

#include "Quorvi/platform/Accessibility.h"
#include "Quorvi/platform/InputActivity.h"
#include "Quorvi/platform/KeyEventTap.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/shortcut/Gestures.h"

namespace quorvi {

// Watches all keyboard, mouse-button and scroll events of the session, recognises the user's
// shortcut, and reports its presses and releases, an Escape that cancels, and interruptions.
// Swallows the key events of the shortcut and that Escape; everything else passes. Counts the
// user's input, so that others can tell whether the user typed or clicked after a field was
// captured.
//
// Main thread; owned by the controller. Callbacks run in a later turn than their event, and none
// that was queued before a reset runs after it. The destructor removes the hook.
class GlobalHotkey {
public:
    // `typing`, optional, stands in for keys that the tap does not see.
    GlobalHotkey(Scheduler& scheduler, KeyEventTap& tap, const Accessibility& accessibility,
                 InputActivity* typing = nullptr,
                 Duration modifierHoldDelay = std::chrono::milliseconds(300));
    ~GlobalHotkey();
    GlobalHotkey(const GlobalHotkey&) = delete;
    GlobalHotkey& operator=(const GlobalHotkey&) = delete;

    // Installs the hook or enables it again, and corrects the state after missed events. Returns
    // whether the hook runs. Called every few seconds as a health check.
    bool start();
    // Removes the hook and clears all tracked input.
    void stop();
    bool isRunning() const;

    // Detects that a held shortcut or a swallowed Escape was released without an event. Checks
    // again a moment later before it acts, since the event may still be under way.
    void reconcilePhysicalInput();

    const Hotkey& shortcut() const { return shortcut_; }
    void setShortcut(Hotkey shortcut);
    DictationMode mode() const { return mode_; }
    void setMode(DictationMode mode);
    // While suspended, nothing is recognised or swallowed, but input is still counted.
    bool suspended() const { return suspended_; }
    void setSuspended(bool suspended);
    // Whether Escape cancels.
    bool cancelEnabled() const { return cancelEnabled_; }
    void setCancelEnabled(bool enabled);

    // Increases with every mouse-button press and every key press other than the shortcut's, as far
    // as the tap sees them, and with what is typed into a field for which this was asked.
    std::uint64_t inputGeneration() const { return inputGeneration_; }

    // Takes what is typed into the field for input, too, until the returned object is destroyed.
    // This program's own insertions count as well, so not during one.
    [[nodiscard]] Subscription countTyping(const AXElement& field);

    // Call when the user gives a command by other means than the shortcut. The keys held now may
    // belong to it, so their auto-repeat is no input. Returns whether one of them has been held
    // since the previous command: a desktop runs the command of a bound key again at each repeat.
    bool noteCommand();

    std::function<void(bool down)> onTransition;
    std::function<void()> onCancel;
    std::function<void()> onInterruption;

    // The hook's handler; public for benchmarks.
    TapVerdict handle(const TapEvent& event);

private:
    using Callback = std::function<void()>;

    TapVerdict handleKey(const TapEvent& event);
    TapVerdict handleEscape(bool isDown);
    TapVerdict handleShortcutKey(const TapEvent& event, bool isDown);
    void handleShortcutModifier(const TapEvent& event);
    void apply(ModifierHotkeyGesture::Action action);
    void armHoldTimer();
    void holdTimerFired();
    void reset();
    void refreshTrackedInput();
    bool missesShortcutRelease() const;
    bool missesEscapeRelease() const;
    void repairMissedReleases();
    void declareSwallowedKeys();
    void queue(Callback callback);
    void queueInterruption();

    Scheduler& scheduler_;
    KeyEventTap& tap_;
    const Accessibility& accessibility_;
    InputActivity* const typing_;
    const Duration modifierHoldDelay_;

    Hotkey shortcut_ = Hotkey::rightOption;
    DictationMode mode_ = DictationMode::hold;
    bool cancelEnabled_ = false;
    bool suspended_ = false;
    bool installed_ = false;
    std::uint64_t inputGeneration_ = 0;

    HotkeyLatch latch_;
    // With a desktop that tells taps: one has begun a dictation, which the next press ends; the
    // last press has ended one.
    bool isTapped_ = false;
    bool endsTapped_ = false;
    ModifierHotkeyGesture modifierGesture_;
    Timer holdTimer_;
    Timer reconcileTimer_;
    std::set<KeyCode> pressedKeys_;
    std::set<std::int64_t> pressedButtons_;
    std::set<KeyCode> commandKeys_;  // held since the last command
    bool escapeIsConsumed_ = false;
    // Queued callbacks are dropped if it has changed or the monitor has been destroyed.
    std::shared_ptr<std::uint64_t> callbackGeneration_ = std::make_shared<std::uint64_t>(0);
};

}  // namespace quorvi
