#pragma once

#include <functional>

#include "QuorviCore/async/Observable.h"

namespace quorvi {

// The user's leave to press keys in the windows of others, on a desktop where Quorvi does not do it
// unasked. Main thread; nothing blocks or throws.
class KeyConsent {
public:
    enum class State {
        off,
        asking,   // the desktop is asking the user
        refused,  // off, since the user or the desktop refused it or does not remember it
        on,
    };

    virtual ~KeyConsent() = default;

    virtual State state() const = 0;
    // Asks for it, or gives it back; later. The desktop's question takes the focus.
    virtual void setWanted(bool wanted) = 0;
    // Called after each change of state().
    [[nodiscard]] virtual Subscription onChange(std::function<void()> observer) = 0;
};

}  // namespace quorvi
