#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>

#include "Quorvi/platform/Pasteboard.h"
#include "Quorvi/platform/linux/clipboard/ClipboardSession.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The clipboard of a display server. Runs on a thread with a connection of its own, so that a
// slow or hanging owner blocks neither the main thread nor the programs that read from us. Offers
// end with the object, unless a keeper (see ClipboardKeeper) takes them over. Never touches the
// primary selection; contents stay in memory.
//
// Operations fail without a server, and each later one tries to reconnect; the change count then
// grows by one, since changes may have been missed.
class ThreadedPasteboard : public Pasteboard {
public:
    // What a session is given; outlives it.
    struct Thread {
        int wakeFd;  // ends wait() when it can be read; an operation that waits reads it empty
        std::atomic<std::int64_t>& changeCount;
        std::function<void(PasteboardRead)> onRead;  // for the clipboard's thread
    };
    // Connects, on the clipboard's thread. Throws ClipboardConnectionLost.
    using Connect = std::function<std::unique_ptr<ClipboardSession>(const Thread&)>;

    ThreadedPasteboard(Scheduler& scheduler, Connect connect);
    ~ThreadedPasteboard() override;

    std::int64_t changeCount() const override { return changeCount_; }
    Task<std::vector<PasteboardItem>> read(std::stop_token stop) override;
    Task<std::optional<std::int64_t>> write(std::vector<PasteboardItem> items) override;
    Task<std::optional<std::int64_t>> writeText(std::string text, TranscriptVisibility visibility,
                                                std::vector<PasteboardItem> former = {},
                                                std::optional<std::int64_t> expected = {}) override;
    void observeReads(std::function<void(PasteboardRead)> observer) override;
    void restore(std::int64_t expected, std::vector<PasteboardItem> items) override;

    // Whether this program owns the clipboard.
    Task<bool> isOffering();

    // Tells the keeper to take over this program's offer, which happens some milliseconds later.
    // Resumes with false if there is no offer.
    Task<bool> handOver();

private:
    class Worker;
    Task<bool> ask(bool (ClipboardSession::*question)());
    Task<std::optional<std::int64_t>> write(std::vector<PasteboardItem> items,
                                            std::vector<PasteboardItem> afterwards,
                                            std::optional<std::int64_t> expected);

    Scheduler& scheduler_;
    std::atomic<std::int64_t> changeCount_{0};
    // Main thread only; what the clipboard's thread has posted finds it gone after this object.
    std::shared_ptr<std::function<void(PasteboardRead)>> readObserver_ =
        std::make_shared<std::function<void(PasteboardRead)>>();
    std::unique_ptr<Worker> worker_;
};

}  // namespace quorvi
