#include "Quorvi/input/GlobalHotkey.h"

#include <utility>

#include "Quorvi/insertion/PasteKeyboard.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// A key's state is known a moment before its event arrives here.
constexpr Duration deliveryTime = 50ms;

}  // namespace

GlobalHotkey::GlobalHotkey(Scheduler& scheduler, KeyEventTap& tap,
                           const Accessibility& accessibility, InputActivity* typing,
                           Duration modifierHoldDelay)
    : scheduler_(scheduler),
      tap_(tap),
      accessibility_(accessibility),
      typing_(typing),
      modifierHoldDelay_(modifierHoldDelay) {}

GlobalHotkey::~GlobalHotkey() {
    stop();
}

bool GlobalHotkey::isRunning() const {
    return installed_ && tap_.isValid() && tap_.isEnabled();
}

bool GlobalHotkey::start() {
    if (installed_ && tap_.isValid()) {
        if (tap_.isEnabled()) {
            reconcilePhysicalInput();
        } else {
            reset();
            refreshTrackedInput();
            tap_.setEnabled(true);
            queueInterruption();
        }
        return tap_.isEnabled();
    }
    if (installed_) stop();
    if (!accessibility_.isTrusted()) return false;
    declareSwallowedKeys();
    if (!tap_.install([this](const TapEvent& event) { return handle(event); })) return false;
    installed_ = true;
    refreshTrackedInput();
    tap_.setEnabled(true);
    return isRunning();
}

void GlobalHotkey::stop() {
    if (installed_) {
        tap_.setEnabled(false);
        tap_.remove();
        installed_ = false;
    }
    reset();
    pressedKeys_.clear();
    commandKeys_.clear();
    pressedButtons_.clear();
}

void GlobalHotkey::reset() {
    holdTimer_.cancel();
    reconcileTimer_.cancel();
    modifierGesture_ = {};
    latch_.reset();
    isTapped_ = false;
    escapeIsConsumed_ = false;
    ++*callbackGeneration_;
}

void GlobalHotkey::setShortcut(Hotkey shortcut) {
    if (shortcut == shortcut_) return;
    shortcut_ = std::move(shortcut);
    reset();
    declareSwallowedKeys();
}

void GlobalHotkey::setMode(DictationMode mode) {
    if (std::exchange(mode_, mode) != mode) reset();
}

void GlobalHotkey::setSuspended(bool suspended) {
    if (std::exchange(suspended_, suspended) == suspended) return;
    reset();
    declareSwallowedKeys();
}

void GlobalHotkey::setCancelEnabled(bool enabled) {
    if (!enabled) isTapped_ = false;
    if (std::exchange(cancelEnabled_, enabled) != enabled) declareSwallowedKeys();
}

void GlobalHotkey::declareSwallowedKeys() {
    std::vector<SwallowedKey> keys;
    if (!suspended_) {
        if (!shortcut_.isModifier()) keys.push_back({shortcut_.keyCode, shortcut_.modifiers});
        if (cancelEnabled_) keys.push_back({keyCode::escape, 0});
    }
    tap_.setSwallowed(std::move(keys));
    const bool quiet = !suspended_ && shortcut_.isModifier();
    tap_.setQuietModifier(quiet ? std::optional(shortcut_.keyCode) : std::nullopt);
}

void GlobalHotkey::refreshTrackedInput() {
    std::erase_if(pressedKeys_, [this](KeyCode key) { return !tap_.keyIsDown(key); });
    std::erase_if(commandKeys_, [this](KeyCode key) { return !tap_.keyIsDown(key); });
    std::erase_if(pressedButtons_, [this](auto button) { return !tap_.buttonIsDown(button); });
}

void GlobalHotkey::reconcilePhysicalInput() {
    refreshTrackedInput();
    if (suspended_ || (!missesShortcutRelease() && !missesEscapeRelease())) return;
    reconcileTimer_ = scheduler_.after(deliveryTime, [this] { repairMissedReleases(); });
}

bool GlobalHotkey::missesShortcutRelease() const {
    const bool held = shortcut_.isModifier() ? modifierGesture_.isPressed() : latch_.isDown;
    return held && !tap_.keyIsDown(shortcut_.keyCode);
}

bool GlobalHotkey::missesEscapeRelease() const {
    return escapeIsConsumed_ && !tap_.keyIsDown(keyCode::escape);
}

void GlobalHotkey::repairMissedReleases() {
    if (missesShortcutRelease()) {
        reset();
        queueInterruption();
    }
    if (missesEscapeRelease()) escapeIsConsumed_ = false;
}

TapVerdict GlobalHotkey::handle(const TapEvent& event) {
    switch (event.type) {
        case TapEventType::tapDisabledByTimeout:
        case TapEventType::tapDisabledByUserInput:
            reset();
            refreshTrackedInput();
            tap_.setEnabled(true);
            queueInterruption();
            return TapVerdict::pass;
        default:
            break;
    }
    if (event.sourceUserData == quorviPasteEventMarker) return TapVerdict::pass;

    switch (event.type) {
        case TapEventType::leftMouseDown:
        case TapEventType::rightMouseDown:
        case TapEventType::otherMouseDown:
            pressedButtons_.insert(event.button);
            ++inputGeneration_;
            if (!suspended_) apply(modifierGesture_.chord());
            return TapVerdict::pass;
        case TapEventType::leftMouseUp:
        case TapEventType::rightMouseUp:
        case TapEventType::otherMouseUp:
            pressedButtons_.erase(event.button);
            return TapVerdict::pass;
        case TapEventType::scrollWheel:
            if (!suspended_) apply(modifierGesture_.chord());
            return TapVerdict::pass;
        default:
            return handleKey(event);
    }
}

TapVerdict GlobalHotkey::handleKey(const TapEvent& event) {
    const bool isDown = event.type == TapEventType::keyDown;
    const bool isUp = event.type == TapEventType::keyUp;
    if (isDown) pressedKeys_.insert(event.keyCode);
    if (isUp) {
        pressedKeys_.erase(event.keyCode);
        commandKeys_.erase(event.keyCode);
    }
    if (suspended_) return TapVerdict::pass;

    if (shortcut_.isModifier()) {
        if (event.type == TapEventType::flagsChanged) {
            if (event.keyCode == shortcut_.keyCode)
                handleShortcutModifier(event);
            else
                apply(modifierGesture_.chord());
            return TapVerdict::pass;
        }
        apply(modifierGesture_.chord());
    }
    if (event.keyCode == keyCode::escape) {
        const bool bare = (event.flags & Hotkey::standardModifierMask) == 0;
        if ((isDown && cancelEnabled_ && bare) || (isUp && escapeIsConsumed_))
            return handleEscape(isDown);
    }
    if (event.keyCode == shortcut_.keyCode) return handleShortcutKey(event, isDown);
    if (isDown && !commandKeys_.contains(event.keyCode)) ++inputGeneration_;
    return TapVerdict::pass;
}

TapVerdict GlobalHotkey::handleEscape(bool isDown) {
    if (isDown && !escapeIsConsumed_)
        queue([this] {
            if (onCancel) onCancel();
        });
    escapeIsConsumed_ = isDown;
    return TapVerdict::swallow;
}

TapVerdict GlobalHotkey::handleShortcutKey(const TapEvent& event, bool isDown) {
    if (shortcut_.isModifier()) return TapVerdict::pass;
    if (!latch_.isDown) {
        if (!isDown) return TapVerdict::pass;
        if ((event.flags & Hotkey::standardModifierMask) != shortcut_.modifiers) {
            ++inputGeneration_;
            return TapVerdict::pass;
        }
    }
    const auto changed = latch_.transition(isDown);
    if (!changed) return TapVerdict::swallow;
    if (isDown) endsTapped_ = std::exchange(isTapped_, false);
    if (event.isTap && mode_ == DictationMode::hold) {
        // Once the press has been carried out.
        if (!endsTapped_) queue([this] { isTapped_ = cancelEnabled_; });
        return TapVerdict::swallow;
    }
    queue([this, down = isDown && !endsTapped_] {
        if (onTransition) onTransition(down);
    });
    return TapVerdict::swallow;
}

void GlobalHotkey::handleShortcutModifier(const TapEvent& event) {
    if (event.flags & shortcut_.deviceModifierMask()) {
        const bool eligible = pressedKeys_.empty() && pressedButtons_.empty() &&
                              shortcut_.isSoleModifier(event.flags);
        apply(modifierGesture_.press(eligible, mode_));
    } else {
        apply(modifierGesture_.release(mode_));
    }
}

void GlobalHotkey::apply(ModifierHotkeyGesture::Action action) {
    using Action = ModifierHotkeyGesture::Action;
    if (!modifierGesture_.isPending()) holdTimer_.cancel();
    switch (action) {
        case Action::arm:
            armHoldTimer();
            break;
        case Action::finish:
        case Action::toggle:
            queue([this, down = action == Action::toggle] {
                if (onTransition) onTransition(down);
            });
            break;
        case Action::cancel:
            queue([this] {
                if (onCancel) onCancel();
            });
            break;
        case Action::none:
        case Action::start:
            break;
    }
}

void GlobalHotkey::armHoldTimer() {
    holdTimer_ = scheduler_.after(modifierHoldDelay_, [this] { holdTimerFired(); });
}

void GlobalHotkey::holdTimerFired() {
    if (suspended_) return;
    if (installed_ && !tap_.keyIsDown(shortcut_.keyCode)) {
        reset();
        return;
    }
    if (modifierGesture_.holdElapsed() == ModifierHotkeyGesture::Action::start && onTransition)
        onTransition(true);
}

Subscription GlobalHotkey::countTyping(const AXElement& field) {
    if (!typing_) return {};
    const auto watch = std::make_shared<Subscription>();
    const auto count = [this, weak = std::weak_ptr(watch)] {
        if (!weak.expired()) ++inputGeneration_;
    };
    *watch = typing_->onTyping(field, [&scheduler = scheduler_, count] { scheduler.post(count); });
    return Subscription(watch);
}

bool GlobalHotkey::noteCommand() {
    refreshTrackedInput();
    const bool isRepeated = !commandKeys_.empty();
    commandKeys_ = pressedKeys_;
    return isRepeated;
}

void GlobalHotkey::queue(Callback callback) {
    std::weak_ptr<std::uint64_t> current = callbackGeneration_;
    scheduler_.post([current, queued = *callbackGeneration_, callback = std::move(callback)] {
        const auto generation = current.lock();
        if (generation && *generation == queued) callback();
    });
}

void GlobalHotkey::queueInterruption() {
    queue([this] {
        if (onInterruption) onInterruption();
    });
}

}  // namespace quorvi
