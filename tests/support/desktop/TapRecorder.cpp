#include "tests/support/desktop/TapRecorder.h"

#include <algorithm>

namespace quorvi::test {

bool TapRecorder::install() {
    return tap.install([this](const TapEvent& event) {
        events.push_back(event);
        return TapVerdict::pass;
    });
}

bool TapRecorder::settle() {
    constexpr std::int64_t mark = 0x5E771E;
    TapEvent f20{.type = TapEventType::keyDown, .keyCode = 90, .sourceUserData = mark};
    tap.post({&f20, 1}, 0);
    f20.type = TapEventType::keyUp;
    tap.post({&f20, 1}, 0);
    const bool settled = waitUntil([&] { return marked(mark).size() == 2; });
    std::erase_if(events, [](const TapEvent& event) { return event.sourceUserData == mark; });
    return settled;
}

std::ptrdiff_t TapRecorder::count(TapEventType type, KeyCode keyCode) const {
    return std::ranges::count_if(events, [&](const TapEvent& event) {
        return event.type == type && event.keyCode == keyCode;
    });
}

std::vector<TapEvent> TapRecorder::marked(std::int64_t mark) const {
    std::vector<TapEvent> result;
    std::ranges::copy_if(events, std::back_inserter(result),
                         [&](const TapEvent& event) { return event.sourceUserData == mark; });
    return result;
}

}  // namespace quorvi::test
