#pragma once

namespace quorvi {

// What shows the state of a dictation above the windows of other programs. It never takes the
// focus. Main thread.
class Indicator {
public:
    virtual ~Indicator() = default;

    virtual void present() = 0;
    virtual void dismiss() = 0;
    // To be called when the surroundings have changed.
    virtual void followSurroundings() = 0;
};

}  // namespace quorvi
