#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "Quorvi/platform/Pasteboard.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

class X11ClipboardSession;

// The CLIPBOARD selection of an X server. Everything happens on a thread with a connection of its
// own, so an owner that is slow or hangs holds up neither the main thread nor the programs that
// read from us. The thread starts with the object and ends with it; what we offered is gone then.
// The PRIMARY selection is never touched, and contents stay in memory.
//
// With a keeper (see ClipboardKeeper) the user's clipboard outlives this program, however it ends.
//
// Without a server operations fail, and each later one tries to connect again; the change count
// then grows by one, since nobody knows what was missed.
class X11Pasteboard : public Pasteboard {
public:
    struct Options {
        std::string display;                               // empty: $DISPLAY
        Duration progressLimit = std::chrono::seconds(1);  // an owner's silence that ends a read
        Duration totalLimit = std::chrono::seconds(3);     // time for a whole read
        std::string keeper;                                // its program; empty: none
    };

    explicit X11Pasteboard(Scheduler& scheduler);
    X11Pasteboard(Scheduler& scheduler, Options options);
    ~X11Pasteboard() override;

    std::int64_t changeCount() const override { return changeCount_; }
    Task<std::vector<PasteboardItem>> read(std::stop_token stop) override;
    Task<std::optional<std::int64_t>> write(std::vector<PasteboardItem> items) override;
    Task<std::optional<std::int64_t>> writeText(std::string text, TranscriptVisibility visibility,
                                                std::vector<PasteboardItem> former = {},
                                                std::optional<std::int64_t> expected = {}) override;
    void restore(std::int64_t expected, std::vector<PasteboardItem> items) override;

    // Whether what is on the clipboard is this program's.
    Task<bool> isOffering();

    // Has the keeper take over what this program offers, which it does some milliseconds later.
    // False when there is nothing to take over.
    Task<bool> handOver();

private:
    class Worker;
    Task<bool> ask(bool (X11ClipboardSession::*question)());
    Task<std::optional<std::int64_t>> write(std::vector<PasteboardItem> items,
                                            std::vector<PasteboardItem> afterwards,
                                            std::optional<std::int64_t> expected);

    Scheduler& scheduler_;
    std::atomic<std::int64_t> changeCount_{0};
    std::unique_ptr<Worker> worker_;
};

}  // namespace quorvi
