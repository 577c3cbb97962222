#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "QuorviCore/async/Task.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// One representation of what is on the clipboard. `type` is the desktop's name for it (an X11
// target such as "UTF8_STRING" or "image/png"), `format` and `encoding` whatever else the desktop
// needs to offer the data again just as it was.
struct PasteboardRepresentation {
    std::string type;
    std::string encoding;  // the X11 property type, often the same as `type`
    int format = 8;        // bits of a unit: 8, 16 or 32
    std::shared_ptr<const Bytes> data;

    bool operator==(const PasteboardRepresentation& other) const;
};

// An item with its representations, in the order the owner offered them. An X11 clipboard holds at
// most one item.
struct PasteboardItem {
    std::vector<PasteboardRepresentation> representations;

    bool operator==(const PasteboardItem&) const = default;
};

enum class TranscriptVisibility {
    everywhere,         // a text like any other
    hiddenFromHistory,  // there for a moment; marked so that clipboard managers don't keep it
};

// The general clipboard. Called on the main thread; the work is done on a thread of its own, in the
// order of the calls, and an owner that doesn't answer costs a bounded wait there.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    // Grows with every change of the clipboard, by anyone. Never blocks.
    virtual std::int64_t changeCount() const = 0;

    // A deep copy of everything on the clipboard, empty when it is empty. Representations whose
    // data can't be read are left out. Throws QuorviError when the owner doesn't answer in time.
    virtual Task<std::vector<PasteboardItem>> read(std::stop_token stop) = 0;

    // Replaces the content; no items empty the clipboard. Yields the change count right after it,
    // or nothing when the clipboard could not be taken. The content stays available until
    // something newer replaces it.
    virtual Task<std::optional<std::int64_t>> write(std::vector<PasteboardItem> items) = 0;
    // A text that is there for a moment stands in for `former`, which is what the clipboard is to
    // hold should this program end before it has given that back. With an `expected` change count
    // nothing is replaced once there is another: what somebody has copied meanwhile stays.
    virtual Task<std::optional<std::int64_t>> writeText(
        std::string text, TranscriptVisibility visibility, std::vector<PasteboardItem> former = {},
        std::optional<std::int64_t> expected = std::nullopt) = 0;

    // The same as write(), but only while the change count is still `expected`; a newer content of
    // somebody else's is left alone. Returns at once, even when nothing waits for it any more.
    virtual void restore(std::int64_t expected, std::vector<PasteboardItem> items) = 0;
};

}  // namespace quorvi
