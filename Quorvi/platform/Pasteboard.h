#pragma once

#include <sys/types.h>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "QuorviCore/async/Task.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// One representation of the clipboard's content. `type` is the desktop's name for it (an X11 target
// such as "UTF8_STRING" or "image/png"); `format` and `encoding` are what the desktop also needs to
// offer the same data again.
struct PasteboardRepresentation {
    std::string type;
    std::string encoding;  // the X11 property type, often the same as `type`
    int format = 8;        // bits of a unit: 8, 16 or 32
    std::shared_ptr<const Bytes> data;

    bool operator==(const PasteboardRepresentation& other) const;
};

// An item with its representations in the order in which the owner offered them. An X11 clipboard
// holds at most one item.
struct PasteboardItem {
    std::vector<PasteboardRepresentation> representations;

    bool operator==(const PasteboardItem&) const = default;
};

// A request of a program for the content that this one has put on the clipboard.
struct PasteboardRead {
    pid_t reader = 0;              // 0 if unknown
    bool content = false;          // it got the content, not only the list of what there is
    std::int64_t changeCount = 0;  // after which write
};

enum class TranscriptVisibility {
    everywhere,         // an ordinary text
    hiddenFromHistory,  // temporary; marked so that clipboard managers don't keep it
};

// The general clipboard. Main thread; the work is done on another thread, in the order of the
// calls. An owner that doesn't answer costs a bounded wait there.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    // Increases with every change of the clipboard, by any program. Never blocks.
    virtual std::int64_t changeCount() const = 0;

    // Returns a deep copy of the content. Omits representations that can't be read. Throws
    // QuorviError if the owner doesn't answer in time, and Cancelled after a stop.
    virtual Task<std::vector<PasteboardItem>> read(std::stop_token stop) = 0;

    // Replaces the content; without items, clears the clipboard. Returns the change count right
    // after that, or nullopt if the clipboard could not be acquired. The content stays available
    // until it is replaced.
    virtual Task<std::optional<std::int64_t>> write(std::vector<PasteboardItem> items) = 0;
    // The same for a text. `former` is restored if this program ends before it has replaced a
    // temporary text. With `expected`, returns nullopt and replaces nothing if the change count is
    // another one, so that a copy which somebody has made meanwhile stays.
    virtual Task<std::optional<std::int64_t>> writeText(
        std::string text, TranscriptVisibility visibility, std::vector<PasteboardItem> former = {},
        std::optional<std::int64_t> expected = std::nullopt) = 0;

    // `observer` is called on the main thread, soon after each such request. Empty: nobody is told.
    virtual void observeReads(std::function<void(PasteboardRead)> observer) = 0;

    // Like write(), but only while the change count is still `expected`, so that newer content of
    // another program stays. Returns at once; the write is done even if nothing waits for it.
    virtual void restore(std::int64_t expected, std::vector<PasteboardItem> items) = 0;
};

}  // namespace quorvi
