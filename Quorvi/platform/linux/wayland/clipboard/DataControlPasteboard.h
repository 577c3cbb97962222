#pragma once

#include "Quorvi/platform/linux/clipboard/ThreadedPasteboard.h"

namespace quorvi {

// The clipboard of a compositor that offers it to programs without the focus. Representations are
// MIME types alone, and a read names no reader.
class DataControlPasteboard : public ThreadedPasteboard {
public:
    // `keeper` is its program; empty: none.
    explicit DataControlPasteboard(Scheduler& scheduler, std::string keeper = {},
                                   ClipboardReadLimits limits = {std::chrono::seconds(1),
                                                                 std::chrono::seconds(3)});
};

}  // namespace quorvi
