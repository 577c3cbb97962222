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

// The clipboard during one connection to the X server: reading, offering, and who owns it. Changes
// are counted from the server's announcements, in the order of its changes, so that a write is
// counted once, at its place among those of others. Clipboard thread; every operation throws
// X11ConnectionLost.
class X11ClipboardSession final : public ClipboardSession {
public:
    // `onRead` is called on the clipboard's thread for each request that was answered.
    X11ClipboardSession(const std::string& display, int wakeFd, ClipboardReadLimits limits,
                        std::atomic<std::int64_t>& changeCount, ClipboardKeeper& keeper,
                        std::function<void(PasteboardRead)> onRead);

    std::vector<PasteboardItem> read(const std::function<bool()>& abandoned) override;
    std::optional<std::int64_t> write(std::vector<PasteboardItem> items,
                                      const std::vector<PasteboardItem>& afterwards,
                                      std::optional<std::int64_t> expected) override;
    void restore(std::int64_t expected, std::vector<PasteboardItem> items) override;

    void prepareKeeper(const std::vector<PasteboardItem>& items) override {
        keeper_.prepare(items);
    }
    bool isOffering() override { return !offered().empty(); }
    bool handOver() override;

    void wait() override;

private:
    struct Write {
        std::shared_ptr<const PasteboardItem> item;
        std::uint32_t owner = 0;
        std::uint32_t time = 0;
        std::optional<std::int64_t> changeCount;
    };

    void handle(const X11SelectionEvent& event);
    void requested(const X11SelectionEvent& event);
    void ownerChanged(const X11SelectionEvent& event);
    std::vector<PasteboardItem> offered();
    std::optional<std::int64_t> take(std::vector<PasteboardItem> items,
                                     const std::vector<PasteboardItem>& afterwards,
                                     std::uint32_t time);

    std::atomic<std::int64_t>& changeCount_;
    ClipboardKeeper& keeper_;
    std::function<void(PasteboardRead)> onRead_;
    X11SelectionConnection connection_;
    X11SelectionServer server_;
    X11SelectionReader reader_;
    std::optional<Write> write_;
};

}  // namespace quorvi
