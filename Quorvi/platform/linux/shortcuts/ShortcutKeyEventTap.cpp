#include "Quorvi/platform/linux/shortcuts/ShortcutKeyEventTap.h"

#include <chrono>
#include <utility>

#include "Quorvi/platform/linux/xkb/KeyMap.h"

namespace quorvi {
namespace {

// A hook that is installed again at once, as after a reset, finds its keys as they were.
constexpr auto unbindDelay = std::chrono::milliseconds(200);

}  // namespace

ShortcutKeyEventTap::ShortcutKeyEventTap(Scheduler& scheduler,
                                         std::unique_ptr<ShortcutSource> source,
                                         std::function<void()> onValid,
                                         std::function<bool(KeyCode)> modifierIsDown)
    : scheduler_(scheduler),
      onValid_(std::move(onValid)),
      modifierIsDown_(std::move(modifierIsDown)),
      source_(std::move(source)) {
    source_->start([this](const auto& key, auto change) { changed(key, change); },
                   [this] { boundChanged(); });
}

bool ShortcutKeyEventTap::install(std::function<TapVerdict(const TapEvent&)> handler) {
    unbinding_.cancel();
    handler_ = std::make_shared<Handler>(std::move(handler));
    isEnabled_ = true;
    declare();
    return true;
}

void ShortcutKeyEventTap::remove() {
    isEnabled_ = false;
    if (!std::exchange(handler_, nullptr)) return;
    unbinding_ = scheduler_.after(unbindDelay, [this] {
        held_.clear();
        source_->bind({});
    });
}

void ShortcutKeyEventTap::setSwallowed(std::vector<SwallowedKey> keys) {
    swallowed_ = std::move(keys);
    declare();
}

void ShortcutKeyEventTap::setQuietModifier(std::optional<KeyCode> modifier) {
    quietModifier_ = modifier;
    declare();
}

void ShortcutKeyEventTap::declare() {
    if (!handler_) return;
    auto keys = swallowed_;
    if (quietModifier_) keys.push_back({*quietModifier_, 0});
    source_->bind(std::move(keys));
}

void ShortcutKeyEventTap::changed(const SwallowedKey& key, ShortcutSource::Change change) {
    tellKey(key, change);
    if (change == ShortcutSource::Change::pressed && !source_->support().release)
        tellKey(key, ShortcutSource::Change::tapped);
}

DesktopShortcut::State ShortcutKeyEventTap::state() const {
    const auto support = source_->support();
    return {.isOffered = support.isOffered,
            .hasRelease = support.release,
            .hasLoneModifiers = support.loneModifiers,
            .hasEscape = support.escape,
            .isInForce = source_->isBound(),
            .takenBy = source_->takenBy(),
            .needsListing = support.needsListing,
            .isListed = source_->isListed()};
}

void ShortcutKeyEventTap::boundChanged() {
    if (handler_) boundChanged(source_->isBound());
    changes_.notify();
}

void ShortcutKeyEventTap::boundChanged(bool isBound) {
    if (isBound) return onValid_();
    if (!std::exchange(held_, {}).empty()) tell({.type = TapEventType::tapDisabledByUserInput});
}

// The modifiers of a shortcut count as released with its key.
void ShortcutKeyEventTap::tellKey(const SwallowedKey& key, ShortcutSource::Change change) {
    const bool isDown = change == ShortcutSource::Change::pressed;
    if (isDown)
        held_.insert(key.keyCode);
    else
        held_.erase(key.keyCode);
    const auto own = flagsOfKey(key.keyCode);
    auto type = isDown ? TapEventType::keyDown : TapEventType::keyUp;
    if (own != 0) type = TapEventType::flagsChanged;
    tell({.type = type,
          .keyCode = key.keyCode,
          .flags = isDown ? key.modifiers | own : 0,
          .isTap = change == ShortcutSource::Change::tapped});
}

// Holds the handler, since it may remove the hook that is calling it.
void ShortcutKeyEventTap::tell(const TapEvent& event) {
    const auto handler = handler_;
    if (handler && isEnabled_) (*handler)(event);
}

}  // namespace quorvi
