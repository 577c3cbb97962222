#pragma once

#include <functional>

#include "Quorvi/platform/Accessibility.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

// Tells that somebody types into a field, where the display shows no program the keys.
class InputActivity {
public:
    virtual ~InputActivity() = default;

    // Calls `typed`, on a thread of the adapter, whenever the text of the field, or of an editable
    // part inside it, changes at its caret. What the application changes elsewhere by itself does
    // not count, nor does the caret alone; what this program inserts does. Listens, at a cost for
    // the application, until the returned object is destroyed; a call that is under way then may
    // still arrive. Main thread; returns at once.
    [[nodiscard]] virtual Subscription onTyping(const AXElement& field,
                                                std::function<void()> typed) = 0;
};

}  // namespace quorvi
