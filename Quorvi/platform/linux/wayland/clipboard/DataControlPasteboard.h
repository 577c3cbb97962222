#pragma once

#include "Quorvi/platform/linux/clipboard/ThreadedPasteboard.h"

namespace quorvi {

// The clipboard of a compositor that offers it to programs without the focus. Representations are
// MIME types alone: a read names no reader, and an offer ends with this program.
class DataControlPasteboard : public ThreadedPasteboard {
public:
    explicit DataControlPasteboard(Scheduler& scheduler,
                                   ClipboardReadLimits limits = {std::chrono::seconds(1),
                                                                 std::chrono::seconds(3)});
};

}  // namespace quorvi
