#pragma once

#include "Quorvi/platform/KeyEventPoster.h"

namespace quorvi {

class X11KeyEventTap;

// Posts through the input hook, since only the connection that posted an event can recognise it.
// Available while the hook is connected, enabled or not. Main thread; the tap outlives it.
class X11KeyEventPoster final : public KeyEventPoster {
public:
    explicit X11KeyEventPoster(X11KeyEventTap& tap);

    bool isAvailable() const override;
    Task<bool> looksBeforePasting(pid_t pid, std::stop_token stop) override;
    void post(std::span<const TapEvent> events, pid_t pid) override;

private:
    X11KeyEventTap& tap_;
};

}  // namespace quorvi
