#include "Quorvi/platform/linux/shortcuts/KeyRepeats.h"

#include <algorithm>

namespace quorvi {
namespace {

using namespace std::chrono_literals;

// A machine that is busy runs commands late. A shorter gap would end a dictation amid a word.
constexpr Duration shortestGap = 150ms;
constexpr Duration lateness = 150ms;
constexpr Duration earliness = 60ms;
// A repeat that is even later than the gap.
constexpr Duration afterglow = 150ms;

}  // namespace

KeyRepeats::Timing KeyRepeats::Timing::of(Duration delay, Duration interval) {
    return {delay - earliness, delay + lateness, std::max(shortestGap, 4 * interval)};
}

KeyRepeats::Timing KeyRepeats::Timing::unknown() {
    return {200ms, 800ms, shortestGap};
}

void KeyRepeats::note() {
    toldAt_ = scheduler_.now();
    switch (state_) {
        case State::up:
            return press();
        case State::down:
            if (timing_.hasRelease) return wait(State::repeating, timing_.gap);
            if (toldAt_ - pressedAt_ >= timing_.earliest)
                return wait(State::uncertain, timing_.gap);
            changed_(Change::tapped);
            return press();
        case State::uncertain:
        case State::repeating:
            return wait(State::repeating, timing_.gap);
        case State::over:
            return wait(State::over, afterglow);
    }
}

void KeyRepeats::release() {
    const bool wasDown = state_ != State::up && state_ != State::over;
    reset();
    if (wasDown) changed_(Change::released);
}

void KeyRepeats::reset() {
    state_ = State::up;
    timer_.cancel();
}

void KeyRepeats::press() {
    pressedAt_ = scheduler_.now();
    wait(State::down, timing_.latest);
    changed_(Change::pressed);
}

void KeyRepeats::wait(State state, Duration time) {
    state_ = state;
    timer_ = scheduler_.after(time, [this] { expire(); });
}

void KeyRepeats::expire() {
    switch (state_) {
        case State::down:
            state_ = State::up;
            return changed_(timing_.hasRelease ? Change::released : Change::tapped);
        case State::uncertain:
            // One repeat alone: the key was pressed a second time, then.
            pressedAt_ = toldAt_;
            wait(State::down, timing_.latest - timing_.gap);
            changed_(Change::tapped);
            return changed_(Change::pressed);
        case State::repeating:
            wait(State::over, afterglow);
            return changed_(Change::released);
        case State::up:
        case State::over:
            state_ = State::up;
    }
}

}  // namespace quorvi
