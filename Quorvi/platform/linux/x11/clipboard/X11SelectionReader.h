#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"
#include "Quorvi/platform/linux/x11/clipboard/X11SelectionConnection.h"

namespace quorvi {

// Thrown if the owner does not answer within the limits.
struct X11OwnerSilent : ClipboardOwnerSilent {};

// Reads the clipboard: copies everything that another program offers. A read returns one owner's
// content; it starts over when the owner changes meanwhile. Lives as long as its connection, on the
// clipboard's thread.
class X11SelectionReader {
public:
    X11SelectionReader(X11SelectionConnection& connection, ClipboardReadLimits limits);

    // Handles other events while it waits, so requests to us are served. Throws X11OwnerSilent, or
    // Cancelled when `abandoned` returns true.
    std::vector<PasteboardItem> read(const std::function<bool()>& abandoned);

    void onReply(const X11SelectionEvent& event);
    void onPropertySet(const X11SelectionEvent& event);
    void onOwnerChanged() { ownerChanged_ = true; }

private:
    struct OwnerChanged {};
    // Each request has a property of its own. One whose answer did not arrive in time is never used
    // again, so that a late answer can't be mistaken for another.
    struct Request {
        std::uint32_t target = 0;
        std::uint32_t property = 0;
        bool answered = false;
        bool refused = false;
        int pieces = 0;  // times the property was set since it was last taken
    };
    class Lease;

    PasteboardItem readOwner();
    std::vector<std::uint32_t> targets();
    std::optional<X11Property> fetch(std::uint32_t target);
    X11Property takePieces(std::size_t expected);
    void waitFor(const std::function<bool()>& condition);

    X11SelectionConnection& connection_;
    ClipboardReadLimits limits_;
    std::uint32_t targets_ = 0;
    std::uint32_t incr_ = 0;
    std::set<std::uint32_t> skipped_;  // targets that are questions, not content
    std::vector<std::uint32_t> freeProperties_;
    std::set<std::uint32_t> lostProperties_;
    int madeProperties_ = 0;

    const std::function<bool()>* abandoned_ = nullptr;
    TimePoint end_{};
    std::uint32_t time_ = 0;
    Request request_;
    bool ownerChanged_ = false;
};

}  // namespace quorvi
