#pragma once

#include <functional>
#include <memory>

#include "Quorvi/platform/linux/atspi/AtspiBus.h"

namespace quorvi::atspi {

// Hears of changes of a field's text and caret while it lives, and tells which look like typing;
// see InputActivity. Any thread; returns at once. The bus outlives it.
class AtspiTypingWatch {
public:
    // `typed` is called on the bus's thread, perhaps once more at the end.
    AtspiTypingWatch(AtspiBus& bus, ObjectRef field, std::function<void()> typed);
    ~AtspiTypingWatch();
    AtspiTypingWatch(const AtspiTypingWatch&) = delete;
    AtspiTypingWatch& operator=(const AtspiTypingWatch&) = delete;

private:
    class Listener;

    AtspiBus& bus_;
    std::shared_ptr<Listener> listener_;
};

}  // namespace quorvi::atspi
