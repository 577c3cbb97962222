#pragma once

#include <ostream>
#include <vector>

#include "Quorvi/platform/KeyEventTap.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/x11/keyboard/X11KeyEventTap.h"
#include "tests/support/Waiting.h"

namespace quorvi {
inline bool operator==(const TapEvent& a, const TapEvent& b) {
    return a.type == b.type && a.keyCode == b.keyCode && a.button == b.button &&
           a.flags == b.flags && a.sourceUserData == b.sourceUserData;
}
inline void PrintTo(const TapEvent& event, std::ostream* out) {
    *out << "{type " << static_cast<std::uint32_t>(event.type) << " key " << event.keyCode
         << " button " << event.button << " flags 0x" << std::hex << event.flags << " data 0x"
         << event.sourceUserData << std::dec << "}";
}
}  // namespace quorvi

namespace quorvi::test {

// An installed input hook whose handler writes down every event, and the main thread's loop.
class TapRecorder {
public:
    LoopScheduler scheduler;
    X11KeyEventTap tap{scheduler};
    std::vector<TapEvent> events;

    bool install();
    // Waits until everything that was asked of the hook so far is in force: it works in order, so
    // an event of its own that has come back was posted after the rest. Types F20.
    bool settle();

    bool waitUntil(const std::function<bool()>& condition) { return until(scheduler, condition); }
    bool waitForEvents(std::size_t count) {
        return waitUntil([&] { return events.size() >= count; });
    }
    bool waitForType(TapEventType type, KeyCode keyCode) {
        return waitUntil([&] { return count(type, keyCode) > 0; });
    }
    std::ptrdiff_t count(TapEventType type, KeyCode keyCode) const;
    std::vector<TapEvent> marked(std::int64_t mark) const;
};

}  // namespace quorvi::test
