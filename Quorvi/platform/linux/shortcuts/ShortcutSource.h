#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Quorvi/platform/KeyEventTap.h"

namespace quorvi {

// The desktop's own global shortcuts: the desktop keeps the keys and tells when they are pressed.
// Main thread; nothing blocks or throws. The destructor gives all keys back.
class ShortcutSource {
public:
    // `tapped`: no auto-repeat has followed the press, and whether the key is still down is
    // unknown. A dictation that is held goes on then, until the next press.
    enum class Change { pressed, released, tapped };

    // What this desktop can do; the user is offered only that.
    struct Support {
        bool isOffered = true;       // there are shortcuts for programs at all
        bool release = false;        // tells when the key goes up; if not, each press is a tap
        bool loneModifiers = false;  // a modifier alone can be the shortcut
        bool escape = false;         // Escape can be bound for the time of a recording
        bool asksUser = false;       // the desktop asks the user before it gives the shortcut
        // Nothing is bound until the shortcut is listed in the desktop's settings, which Quorvi
        // changes at the user's wish.
        bool needsListing = false;

        bool operator==(const Support&) const = default;
    };

    virtual ~ShortcutSource() = default;

    virtual Support support() const = 0;

    // Binds exactly these keys; those not named any more are given back. A lone modifier comes as
    // its key without modifiers. Returns at once. The same keys again are tried again if they were
    // refused, except where that would ask the user.
    virtual void bind(std::vector<SwallowedKey> keys) = 0;

    // Whether the desktop holds all keys of the last bind(), as far as it has answered; without
    // keys, whether it can be asked. Escape does not count, so that the answer stays the same while
    // a recording begins and ends.
    virtual bool isBound() const = 0;

    // What the desktop uses a refused key for, in its own words; empty if that is unknown.
    virtual std::string takenBy() const { return {}; }

    // With `needsListing`: whether it is listed, and the user's wish, which is carried out later.
    virtual bool isListed() const { return false; }
    virtual void setListed(bool) {}

    // From now on `changed` is called with each press and release of a bound key, without the
    // auto-repeat, and `boundChanged` when isBound(), takenBy() or isListed() has
    // changed; both on the main thread.
    virtual void start(std::function<void(const SwallowedKey&, Change)> changed,
                       std::function<void()> boundChanged) = 0;
};

}  // namespace quorvi
