#pragma once

#include <string>

#include "Quorvi/platform/linux/clipboard/ThreadedPasteboard.h"

namespace quorvi {

// The CLIPBOARD selection of an X server.
class X11Pasteboard : public ThreadedPasteboard {
public:
    struct Options {
        std::string display;                               // empty: $DISPLAY
        Duration progressLimit = std::chrono::seconds(1);  // an owner's silence that ends a read
        Duration totalLimit = std::chrono::seconds(3);     // time for a whole read
        std::string keeper;                                // its program; empty: none
    };

    explicit X11Pasteboard(Scheduler& scheduler);
    X11Pasteboard(Scheduler& scheduler, Options options);
};

}  // namespace quorvi
