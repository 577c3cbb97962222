#pragma once

#include <algorithm>
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

    bool install() {
        return tap.install([this](const TapEvent& event) {
            events.push_back(event);
            return TapVerdict::pass;
        });
    }
    // Waits until everything that was asked of the hook so far is in force: it works in order, so
    // an event of its own that has come back was posted after the rest. Types F20.
    bool settle() {
        constexpr std::int64_t mark = 0x5E771E;
        TapEvent f20{.type = TapEventType::keyDown, .keyCode = 90, .sourceUserData = mark};
        tap.post({&f20, 1}, 0);
        f20.type = TapEventType::keyUp;
        tap.post({&f20, 1}, 0);
        const bool settled = waitUntil([&] { return marked(mark).size() == 2; });
        std::erase_if(events, [](const TapEvent& event) { return event.sourceUserData == mark; });
        return settled;
    }

    bool waitUntil(const std::function<bool()>& condition) { return until(scheduler, condition); }
    bool waitForEvents(std::size_t count) {
        return waitUntil([&] { return events.size() >= count; });
    }
    bool waitForType(TapEventType type, KeyCode keyCode) {
        return waitUntil([&] { return count(type, keyCode) > 0; });
    }
    std::ptrdiff_t count(TapEventType type, KeyCode keyCode) const {
        return std::ranges::count_if(events, [&](const TapEvent& event) {
            return event.type == type && event.keyCode == keyCode;
        });
    }
    std::vector<TapEvent> marked(std::int64_t mark) const {
        std::vector<TapEvent> result;
        std::ranges::copy_if(events, std::back_inserter(result),
                             [&](const TapEvent& event) { return event.sourceUserData == mark; });
        return result;
    }
};

}  // namespace quorvi::test
