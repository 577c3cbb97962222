#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "Quorvi/platform/KeyEventTap.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// Where the thread of an input hook leaves events for the main thread. Shared by both and by the
// posted deliveries, which find it gone once the hook has been removed.
class TapInbox : public std::enable_shared_from_this<TapInbox> {
public:
    using Handler = std::function<TapVerdict(const TapEvent&)>;

    TapInbox(Scheduler& scheduler, Handler handler)
        : scheduler_(scheduler), handler_(std::make_shared<Handler>(std::move(handler))) {}

    // The hook's thread.
    void add(const TapEvent& event);
    // Lets events pass again, once the hook's thread has enabled itself.
    void unmute();

    // Main thread: drops all events from now on, for a while or for good.
    void mute();
    void close() { handler_ = nullptr; }

private:
    void deliver();
    bool isMuted();
    std::vector<TapEvent> take();

    Scheduler& scheduler_;
    // Main thread only. Shared, because a handler may remove the hook that is calling it.
    std::shared_ptr<Handler> handler_;
    std::mutex mutex_;  // guards what follows, never held for long
    std::vector<TapEvent> events_;
    bool muted_ = false;
};

}  // namespace quorvi
