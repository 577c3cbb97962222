#pragma once

#include <unistd.h>

#include <chrono>
#include <memory>

#include "Quorvi/platform/linux/clipboard/ClipboardHandover.h"
#include "Quorvi/platform/linux/posix/Descriptor.h"

namespace quorvi {

// The keeper of a Wayland compositor's clipboard. Offers have no names there; that Quorvi's was the
// last is known from Quorvi, and that it has gone from the clipboard, which is then empty.
class WaylandKeeper {
public:
    // `pasteTime`: how long an application that was told to paste may ask for the transcript.
    explicit WaylandKeeper(std::chrono::milliseconds pasteTime) : pasteTime_(pasteTime) {}

    // Returns when another program has copied, or there is nothing to keep. Throws
    // ClipboardConnectionLost without a compositor.
    void run();

private:
    using Clock = std::chrono::steady_clock;

    // Listens to Quorvi until it wants the content offered or has ended, and returns the former.
    bool listen();

    const std::chrono::milliseconds pasteTime_;
    const Descriptor socket_{STDIN_FILENO};
    std::unique_ptr<Descriptor> content_;
    Clock::time_point pasted_{};  // when the transcript is pasted at the latest
};

}  // namespace quorvi
