#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "Quorvi/platform/KeyEventTap.h"

namespace quorvi::test {

// A keyboard and mouse in a test's hands, with the hook between them and the application. Flags
// follow the modifier keys that are held, with their sides. Whether the application gets an event
// is decided by the declared list alone, as in the real hook; a handler that says otherwise is
// written down in `contradictions`.
class FakeKeyEventTap : public KeyEventTap {
public:
    bool install(std::function<TapVerdict(const TapEvent&)> handler) override;
    void remove() override;
    bool isValid() const override { return valid_; }
    bool isEnabled() const override { return valid_ && enabled_; }
    void setEnabled(bool enabled) override { enabled_ = enabled; }
    void setSwallowed(std::vector<SwallowedKey> keys) override { declared_ = std::move(keys); }
    bool keyIsDown(KeyCode keyCode) const override { return keys_.contains(keyCode); }
    bool buttonIsDown(std::int64_t button) const override { return buttons_.contains(button); }

    // The user. Pressing a key that is held already is its auto-repeat.
    void press(KeyCode keyCode);
    void release(KeyCode keyCode);
    void tap(KeyCode keyCode);
    void pressButton(std::int64_t button = 0);
    void releaseButton(std::int64_t button = 0);
    void click(std::int64_t button = 0);
    void scroll();
    std::uint64_t flags() const;

    // An event that comes from elsewhere, such as a synthesised paste; the physical state of the
    // keys stays what it is.
    void deliver(const TapEvent& event);

    // The system. A disabled hook is told so; what happens until it is enabled is missed.
    void disable(TapEventType reason = TapEventType::tapDisabledByTimeout);
    void invalidate() { valid_ = false; }

    int installs = 0;
    std::vector<TapEvent> passed;     // what the application received
    std::vector<TapEvent> swallowed;  // what it was spared
    std::vector<std::string> contradictions;

private:
    TapVerdict decide(const TapEvent& event);
    TapEvent keyEvent(KeyCode keyCode, bool down) const;
    TapEvent buttonEvent(std::int64_t button, bool down) const;

    std::function<TapVerdict(const TapEvent&)> handler_;
    std::vector<SwallowedKey> declared_;
    std::set<KeyCode> keys_;
    std::set<KeyCode> heldBack_;  // keys whose press was swallowed and whose release will be
    std::set<std::int64_t> buttons_;
    bool valid_ = false;
    bool enabled_ = false;
};

}  // namespace quorvi::test
