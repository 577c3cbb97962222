#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"
#include "Quorvi/platform/linux/clipboard/ClipboardKeeper.h"
#include "Quorvi/platform/linux/x11/clipboard/X11SelectionConnection.h"
#include "Quorvi/platform/linux/x11/clipboard/X11SelectionReader.h"
#include "Quorvi/platform/linux/x11/clipboard/X11SelectionServer.h"

namespace quorvi {

// The clipboard as long as one connection to the X server lasts: both halves of the traffic, and
// who owns it. Changes are counted from the server's own announcements, which come in the order in
// which it carried them out; so a write is counted once, exactly where it happened among those of
// others. Used by the clipboard's thread only; every operation throws X11ConnectionLost.
class X11ClipboardSession {
public:
    X11ClipboardSession(const std::string& display, int wakeFd, X11ReadLimits limits,
                        std::atomic<std::int64_t>& changeCount, ClipboardKeeper& keeper);

    std::vector<PasteboardItem> read(const std::function<bool()>& abandoned);
    // `afterwards` is what the clipboard is to hold after this program.
    std::optional<std::int64_t> write(std::vector<PasteboardItem> items,
                                      const std::vector<PasteboardItem>& afterwards,
                                      std::optional<std::int64_t> expected);
    void restore(std::int64_t expected, std::vector<PasteboardItem> items);

    // Readies the keeper for what was read, which is what will be given back.
    void prepareKeeper(const std::vector<PasteboardItem>& items) { keeper_.prepare(items); }
    bool isOffering() { return !offered().empty(); }
    // False when we offer nothing.
    bool handOver();

    // Serves others until `wakeFd` is written to.
    void wait();

private:
    struct Write {
        std::shared_ptr<const PasteboardItem> item;
        std::uint32_t owner = 0;
        std::uint32_t time = 0;
        std::optional<std::int64_t> changeCount;
    };

    void handle(const X11SelectionEvent& event);
    void ownerChanged(const X11SelectionEvent& event);
    std::vector<PasteboardItem> offered();
    std::optional<std::int64_t> take(std::vector<PasteboardItem> items,
                                     const std::vector<PasteboardItem>& afterwards,
                                     std::uint32_t time);

    std::atomic<std::int64_t>& changeCount_;
    ClipboardKeeper& keeper_;
    X11SelectionConnection connection_;
    X11SelectionServer server_;
    X11SelectionReader reader_;
    std::optional<Write> write_;
};

}  // namespace quorvi
