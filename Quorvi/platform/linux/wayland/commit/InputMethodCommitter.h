#pragma once

#include "Quorvi/platform/TextCommitter.h"
#include "Quorvi/platform/linux/wayland/input/WaylandInput.h"

namespace quorvi {

// Commits text as the seat's input method, which it is only while a field is held. Main thread; the
// scheduler and the input outlive it and its fields.
class InputMethodCommitter final : public TextCommitter {
public:
    InputMethodCommitter(Scheduler& scheduler, WaylandInput& input)
        : scheduler_(scheduler), input_(input) {}

    Task<std::unique_ptr<CommitField>> focusedField(Duration patience,
                                                    std::stop_token stop) override;

private:
    class Use;
    class Field;

    Scheduler& scheduler_;
    WaylandInput& input_;
};

}  // namespace quorvi
