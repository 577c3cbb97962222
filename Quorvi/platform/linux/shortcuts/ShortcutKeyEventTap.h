#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "Quorvi/platform/DesktopShortcut.h"
#include "Quorvi/platform/KeyEventTap.h"
#include "Quorvi/platform/linux/shortcuts/ShortcutSource.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The input hook where the desktop has the shortcuts: it sees the declared keys and no others. An
// installed hook is valid once the desktop has confirmed the keys, which nothing waits for. Main
// thread; the scheduler outlives it. When the keys are lost while one is held, the handler gets
// tapDisabledByUserInput.
class ShortcutKeyEventTap final : public KeyEventTap, public DesktopShortcut {
public:
    // `onValid` is called on the main thread. `modifierIsDown` is what else knows of a modifier.
    ShortcutKeyEventTap(
        Scheduler& scheduler, std::unique_ptr<ShortcutSource> source,
        std::function<void()> onValid = [] {},
        std::function<bool(KeyCode)> modifierIsDown = [](KeyCode) { return false; });

    State state() const override;
    void setListed(bool listed) override { source_->setListed(listed); }
    [[nodiscard]] Subscription onChange(std::function<void()> observer) override {
        return changes_.subscribe(std::move(observer));
    }

    bool install(std::function<TapVerdict(const TapEvent&)> handler) override;
    void remove() override;
    bool isValid() const override { return handler_ && source_->isBound(); }
    bool isEnabled() const override { return isEnabled_ && isValid(); }
    void setEnabled(bool enabled) override { isEnabled_ = handler_ && enabled; }
    void setSwallowed(std::vector<SwallowedKey> keys) override;
    void setQuietModifier(std::optional<KeyCode> modifier) override;
    bool keyIsDown(KeyCode keyCode) const override {
        return held_.contains(keyCode) || modifierIsDown_(keyCode);
    }
    bool buttonIsDown(std::int64_t) const override { return false; }

private:
    using Handler = std::function<TapVerdict(const TapEvent&)>;

    void declare();
    void changed(const SwallowedKey& key, ShortcutSource::Change change);
    void boundChanged();
    void boundChanged(bool isBound);
    void tell(const TapEvent& event);
    void tellKey(const SwallowedKey& key, ShortcutSource::Change change);

    Scheduler& scheduler_;
    const std::function<void()> onValid_;
    const std::function<bool(KeyCode)> modifierIsDown_;
    std::shared_ptr<Handler> handler_;  // while the hook is installed
    std::vector<SwallowedKey> swallowed_;
    std::optional<KeyCode> quietModifier_;
    std::set<KeyCode> held_;
    bool isEnabled_ = false;
    Timer unbinding_;
    Observable changes_;                            // of the state
    const std::unique_ptr<ShortcutSource> source_;  // calls back until it is destroyed
};

}  // namespace quorvi
