#pragma once

#include <utility>

#include "Quorvi/platform/linux/keyboard/ChordPoster.h"
#include "Quorvi/platform/linux/wayland/input/WaylandInput.h"

namespace quorvi {

// Posts through a virtual keyboard with a layout of its own, so that neither the user's layout nor
// the modifiers that the user holds change the keys. Main thread; the input outlives it.
class VirtualKeyboardPoster final : public ChordPoster {
public:
    VirtualKeyboardPoster(WaylandInput& input, std::function<std::string()> activeClass)
        : ChordPoster(std::move(activeClass)), input_(input) {}

    bool isAvailable() const override { return input_.isAlive(); }

private:
    void press(const ChordKeys& keys) override;

    WaylandInput& input_;
};

}  // namespace quorvi
