#pragma once

#include <functional>
#include <string>

#include "QuorviCore/async/Observable.h"

namespace quorvi {

// The global shortcut on a desktop that keeps the keys itself and tells programs of theirs. Main
// thread; nothing blocks or throws.
class DesktopShortcut {
public:
    struct State {
        bool isOffered = true;         // the desktop has shortcuts for programs
        bool hasRelease = true;        // the desktop tells when the key goes up
        bool hasLoneModifiers = true;  // a modifier alone can be the shortcut
        bool hasEscape = true;         // Escape cancels
        bool isInForce = true;         // the desktop holds the key for Quorvi
        // What else the desktop uses the key for, in its own words; empty if unknown.
        std::string takenBy;
        // The key works only while it is listed in the desktop's settings, which Quorvi changes at
        // the user's wish.
        bool needsListing = false;
        bool isListed = false;

        bool operator==(const State&) const = default;
    };

    virtual ~DesktopShortcut() = default;

    virtual State state() const = 0;
    // Lists the shortcut in the desktop's settings, or removes all trace of it; later.
    virtual void setListed(bool listed) = 0;
    // Called after each change of state().
    [[nodiscard]] virtual Subscription onChange(std::function<void()> observer) = 0;
};

}  // namespace quorvi
