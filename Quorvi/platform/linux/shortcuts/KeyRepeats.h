#pragma once

#include <chrono>
#include <functional>

#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Tells a key that is held from one that is pressed again, where a desktop only runs a command or
// sends a signal at each press and at each auto-repeat. Main thread; the scheduler outlives it.
class KeyRepeats {
public:
    enum class Change {
        pressed,
        released,  // the auto-repeat has stopped
        tapped,  // none has begun, where the desktop tells no release; the key may be up or, where
                 // keys don't repeat, still down
    };

    // When the first repeat can come after a press, and how long after one the next.
    struct Timing {
        Duration earliest;
        Duration latest;
        Duration gap;
        // The desktop tells the release as well, but not always: repeats that stop, or do not
        // begin, are one, too, and nothing is a second press.
        bool hasRelease = false;

        // As the desktop repeats keys; the command may be late.
        static Timing of(Duration delay, Duration interval);
        // For any desktop.
        static Timing unknown();
    };

    KeyRepeats(Scheduler& scheduler, Timing timing, std::function<void(Change)> changed)
        : scheduler_(scheduler), timing_(timing), changed_(std::move(changed)) {}

    void setTiming(Timing timing) { timing_ = timing; }

    // A press or a repeat of it has been told.
    void note();
    // The desktop has told the release.
    void release();
    // Forgets the key without a call.
    void reset();

private:
    enum class State {
        up,
        down,       // pressed
        uncertain,  // told again when a repeat was due: held, or pressed again
        repeating,
        over,  // released; a repeat that is still on its way is no press
    };
    void press();
    void expire();
    void wait(State state, Duration time);

    Scheduler& scheduler_;
    Timing timing_;
    const std::function<void(Change)> changed_;
    State state_ = State::up;
    TimePoint pressedAt_;
    TimePoint toldAt_;
    Timer timer_;
};

}  // namespace quorvi
