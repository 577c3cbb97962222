#pragma once

#include <functional>
#include <string>

#include "Quorvi/platform/KeyEventPoster.h"
#include "Quorvi/platform/linux/keyboard/ChordKeys.h"

namespace quorvi {

// What the posters share that press nothing but the paste combination of the focused program. Main
// thread.
class ChordPoster : public KeyEventPoster {
public:
    // `activeClass` names the focused window's program, see PasteChords.
    explicit ChordPoster(std::function<std::string()> activeClass)
        : activeClass_(std::move(activeClass)) {}

    Task<bool> looksBeforePasting(pid_t pid, std::stop_token stop) override;
    // Only Command-V: no other keys are needed.
    void post(std::span<const TapEvent> events, pid_t pid) override;

    // The combinations that a posted Command-V becomes; the built-in ones at first.
    void setPasteChords(PasteChords chords) { chords_ = std::move(chords); }

private:
    // Presses and releases them. Returns at once.
    virtual void press(const ChordKeys& keys) = 0;

    PasteChords::Choice choice() const;

    const std::function<std::string()> activeClass_;
    PasteChords chords_;
};

}  // namespace quorvi
