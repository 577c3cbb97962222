#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>

#include "Quorvi/platform/Accessibility.h"
#include "Quorvi/platform/KeyEventTap.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/shortcut/Gestures.h"

namespace quorvi {

// Watches every keyboard, mouse-button and scroll event of the session, recognises the user's
// shortcut, and reports its presses and releases, a cancelling Escape and interruptions. Swallows
// the shortcut's own key events and that Escape; everything else passes. Counts the user's input,
// so that others notice that the user typed or clicked after a field was captured.
//
// Main thread. Callbacks run in a later turn than the event that caused them, and none that was
// queued before a reset runs after it. Destroying the monitor removes the hook.
class GlobalHotkey {
public:
    GlobalHotkey(Scheduler& scheduler, KeyEventTap& tap, const Accessibility& accessibility,
                 Duration modifierHoldDelay = std::chrono::milliseconds(300));
    ~GlobalHotkey();
    GlobalHotkey(const GlobalHotkey&) = delete;
    GlobalHotkey& operator=(const GlobalHotkey&) = delete;

    // Installs or revives the hook, and repairs what missed events left behind; true when it runs.
    // Called every few seconds, it is also the monitor's health check.
    bool start();
    // Removes the hook and forgets all tracked input.
    void stop();
    bool isRunning() const;

    // Notices that a held shortcut, or a swallowed Escape, was released without an event. The event
    // may still be on its way, so what looks missed is looked at again a moment later.
    void reconcilePhysicalInput();

    const Hotkey& shortcut() const { return shortcut_; }
    void setShortcut(Hotkey shortcut);
    DictationMode mode() const { return mode_; }
    void setMode(DictationMode mode);
    // While suspended nothing is recognised or swallowed, but input is still counted.
    bool suspended() const { return suspended_; }
    void setSuspended(bool suspended);
    // Whether Escape cancels.
    bool cancelEnabled() const { return cancelEnabled_; }
    void setCancelEnabled(bool enabled);

    // Grows with every key press that is not the shortcut's and every mouse-button press.
    std::uint64_t inputGeneration() const { return inputGeneration_; }

    std::function<void(bool down)> onTransition;
    std::function<void()> onCancel;
    std::function<void()> onInterruption;

    // The hook's handler; public so that the decision can be measured by itself.
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
    const Duration modifierHoldDelay_;

    Hotkey shortcut_ = Hotkey::rightOption;
    DictationMode mode_ = DictationMode::hold;
    bool cancelEnabled_ = false;
    bool suspended_ = false;
    bool installed_ = false;
    std::uint64_t inputGeneration_ = 0;

    HotkeyLatch latch_;
    ModifierHotkeyGesture modifierGesture_;
    Timer holdTimer_;
    Timer reconcileTimer_;
    std::set<KeyCode> pressedKeys_;
    std::set<std::int64_t> pressedButtons_;
    bool escapeIsConsumed_ = false;
    // Shared with queued callbacks, which are dropped when it has changed or the monitor is gone.
    std::shared_ptr<std::uint64_t> callbackGeneration_ = std::make_shared<std::uint64_t>(0);
};

}  // namespace quorvi
