#pragma once

#include <utility>

#include "Quorvi/platform/linux/keyboard/ChordPoster.h"
#include "Quorvi/platform/linux/wayland/input/WaylandInput.h"

namespace quorvi {

// Posts KWin's fake input. What the user holds would change the combination, so all modifiers are
// let go of first; they count again when they are pressed again. KWin 6 ignores that for what this
// program has not pressed, but tells what is held. Main thread; the input outlives it.
class FakeInputPoster final : public ChordPoster {
public:
    FakeInputPoster(WaylandInput& input, std::function<std::string()> activeClass)
        : ChordPoster(std::move(activeClass)), input_(input) {}

    bool isAvailable() const override { return input_.isAlive(); }

private:
    void press(const ChordKeys& keys) override;

    WaylandInput& input_;
};

}  // namespace quorvi
