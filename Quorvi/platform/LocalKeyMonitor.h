#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "QuorviCore/async/Observable.h"
#include "QuorviCore/shortcut/Hotkey.h"

namespace quorvi {

// A key event in one of this program's own windows. A plain value.
struct LocalKeyEvent {
    enum class Type { keyDown, flagsChanged };

    Type type = Type::keyDown;
    KeyCode keyCode = 0;
    std::uint64_t flags = 0;                // modifierFlag bits after the event, sides included
    std::optional<std::string> characters;  // the key's text without modifiers
};

// Lets an observer see this program's own key events before its windows do. Main thread.
class LocalKeyMonitor {
public:
    // Returns true to keep the event from the window.
    using Handler = std::function<bool(const LocalKeyEvent&)>;

    virtual ~LocalKeyMonitor() = default;

    // Observes while the subscription exists. The handler may destroy it. One observer at a time.
    [[nodiscard]] virtual Subscription observe(Handler handler) = 0;
};

}  // namespace quorvi
