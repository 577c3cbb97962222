#pragma once

#include "Quorvi/platform/KeyEventPoster.h"

namespace quorvi {

// Where no program may press keys in others' windows. Main thread.
class NoKeyEventPoster final : public KeyEventPoster {
public:
    bool isAvailable() const override { return false; }
    Task<bool> looksBeforePasting(pid_t, std::stop_token) override { co_return false; }
    void post(std::span<const TapEvent>, pid_t) override {}
};

}  // namespace quorvi
