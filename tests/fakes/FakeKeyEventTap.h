#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "Quorvi/platform/KeyEventTap.h"

namespace quorvi::test {

// A keyboard and a mouse for tests, and the hook between them and the application. Flags follow the
// held modifier keys, with their sides. As in the real hook, the declared list alone decides
// whether the application receives an event; a different verdict of the handler goes to
// `contradictions`.
class FakeKeyEventTap : public KeyEventTap {
public:
    bool install(std::function<TapVerdict(const TapEvent&)> handler) override;
    void remove() override;
    bool isValid() const override { return valid_; }
    bool isEnabled() const override { return valid_ && enabled_; }
    void setEnabled(bool enabled) override { enabled_ = enabled; }
    void setSwallowed(std::vector<SwallowedKey> keys) override { declared_ = std::move(keys); }
    void setQuietModifier(std::optional<KeyCode>) override {}
    bool keyIsDown(KeyCode keyCode) const override { return keys_.contains(keyCode); }
    bool buttonIsDown(std::int64_t) const override { return buttonIsDown_; }

    // What the user does. Pressing a held key again is its auto-repeat.
    void press(KeyCode keyCode);
    void release(KeyCode keyCode);
    void tap(KeyCode keyCode);
    void pressButton();  // the left one
    void click();
    void scroll();
    std::uint64_t flags() const;

    // Delivers an event of another origin, such as a synthesised paste, which leaves the physical
    // state of the keys as it is.
    void deliver(const TapEvent& event);

    // What the system does. A disabled hook is notified, and misses all events until it is enabled.
    void disable();
    void invalidate() { valid_ = false; }
    bool isRefused = false;  // from the next install() on

    std::vector<TapEvent> swallowed;  // what the application did not receive
    std::vector<std::string> contradictions;

private:
    TapVerdict decide(const TapEvent& event);
    TapEvent keyEvent(KeyCode keyCode, bool down) const;

    std::function<TapVerdict(const TapEvent&)> handler_;
    std::vector<SwallowedKey> declared_;
    std::set<KeyCode> keys_;
    std::set<KeyCode> heldBack_;  // keys whose press was swallowed and whose release will be
    bool buttonIsDown_ = false;
    bool valid_ = false;
    bool enabled_ = false;
};

}  // namespace quorvi::test
