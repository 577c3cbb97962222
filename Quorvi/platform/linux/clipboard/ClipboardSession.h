#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

struct ClipboardConnectionLost {};  // there is no display server, or it has gone
struct ClipboardOwnerSilent {};     // the clipboard's owner does not answer in time

struct ClipboardReadLimits {
    Duration progress;  // an owner's silence that ends a read
    Duration total;     // time for a whole read
};

// The clipboard during one connection to a display server: reading, offering, and counting the
// changes. Clipboard thread; every operation throws ClipboardConnectionLost.
class ClipboardSession {
public:
    virtual ~ClipboardSession() = default;

    // Throws ClipboardOwnerSilent, or Cancelled once `abandoned` returns true.
    virtual std::vector<PasteboardItem> read(const std::function<bool()>& abandoned) = 0;
    // `afterwards` is the clipboard's content after this program has ended.
    virtual std::optional<std::int64_t> write(std::vector<PasteboardItem> items,
                                              const std::vector<PasteboardItem>& afterwards,
                                              std::optional<std::int64_t> expected) = 0;
    virtual void restore(std::int64_t expected, std::vector<PasteboardItem> items) = 0;

    // What was read will be restored.
    virtual void prepareKeeper(const std::vector<PasteboardItem>& items) = 0;
    virtual bool isOffering() = 0;
    // Returns false if we offer nothing, or nobody could.
    virtual bool handOver() = 0;

    // Serves other programs until the thread has something to do.
    virtual void wait() = 0;
};

}  // namespace quorvi
