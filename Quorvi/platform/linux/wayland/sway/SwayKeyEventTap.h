#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Quorvi/platform/KeyEventTap.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

class SwayShortcuts;
class TapInbox;
class WaylandInput;

// The input hook on sway. It sees the declared keys at any time, and all others only while one of
// the declared keys is held: no program sees more on Wayland. So a key that the user types into a
// field before that is no event here; the field's own caret tells. An installed hook is valid once
// sway holds the keys, which nothing waits for. Main thread; the scheduler and the input outlive
// it. When sway is lost the handler gets tapDisabledByUserInput.
class SwayKeyEventTap final : public KeyEventTap {
public:
    // `onValid` is called on the input's thread.
    SwayKeyEventTap(
        Scheduler& scheduler, WaylandInput& input, std::function<void()> onValid = [] {});
    ~SwayKeyEventTap() override;

    bool install(std::function<TapVerdict(const TapEvent&)> handler) override;
    void remove() override;
    bool isValid() const override;
    bool isEnabled() const override { return isEnabled_ && isValid(); }
    void setEnabled(bool enabled) override;
    void setSwallowed(std::vector<SwallowedKey> keys) override;
    void setQuietModifier(std::optional<KeyCode> modifier) override;
    bool keyIsDown(KeyCode keyCode) const override;
    bool buttonIsDown(std::int64_t) const override { return false; }

private:
    struct Connection;
    std::shared_ptr<Connection> connect();
    void disconnect();
    std::vector<SwallowedKey> keys() const;
    void declare();

    Scheduler& scheduler_;
    WaylandInput& input_;
    const std::function<void()> onValid_;
    std::shared_ptr<Connection> connection_;  // kept by remove(), for the next install()
    std::shared_ptr<TapInbox> inbox_;         // while the hook is installed
    std::vector<SwallowedKey> swallowed_;
    std::optional<KeyCode> quietModifier_;
    bool isEnabled_ = false;
};

}  // namespace quorvi
