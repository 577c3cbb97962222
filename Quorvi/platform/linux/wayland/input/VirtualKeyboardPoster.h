#pragma once

#include <functional>
#include <string>

#include "Quorvi/platform/KeyEventPoster.h"
#include "Quorvi/platform/linux/keyboard/PasteChords.h"
#include "Quorvi/platform/linux/wayland/input/WaylandInput.h"

namespace quorvi {

// Posts through a virtual keyboard with a layout of its own, so that neither the user's layout nor
// the modifiers that the user holds change the keys. Main thread; the input outlives it.
class VirtualKeyboardPoster final : public KeyEventPoster {
public:
    // `activeClass` names the focused window's program, see PasteChords.
    VirtualKeyboardPoster(WaylandInput& input, std::function<std::string()> activeClass);

    bool isAvailable() const override { return input_.isAlive(); }
    Task<bool> looksBeforePasting(pid_t pid, std::stop_token stop) override;
    // Only Command-V, as the program's paste chord: no other keys are needed.
    void post(std::span<const TapEvent> events, pid_t pid) override;

    // The combinations that a posted Command-V becomes; the built-in ones at first.
    void setPasteChords(PasteChords chords) { chords_ = std::move(chords); }

private:
    PasteChords::Choice choice() const;

    WaylandInput& input_;
    std::function<std::string()> activeClass_;
    PasteChords chords_;
};

}  // namespace quorvi
