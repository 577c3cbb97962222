#include "Quorvi/platform/linux/x11/keyboard/X11KeyEventPoster.h"

#include <utility>

#include "Quorvi/platform/linux/x11/keyboard/X11KeyEventTap.h"

namespace quorvi {

X11KeyEventPoster::X11KeyEventPoster(X11KeyEventTap& tap) : tap_(tap) {}

bool X11KeyEventPoster::isAvailable() const {
    return tap_.isValid();
}

Task<bool> X11KeyEventPoster::looksBeforePasting(pid_t pid, std::stop_token stop) {
    return tap_.looksBeforePasting(pid, std::move(stop));
}

void X11KeyEventPoster::post(std::span<const TapEvent> events, pid_t pid) {
    tap_.post(events, pid);
}

}  // namespace quorvi
