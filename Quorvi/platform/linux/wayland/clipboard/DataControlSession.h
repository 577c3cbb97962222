#pragma once

#include <poll.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"
#include "Quorvi/platform/linux/clipboard/ClipboardKeeper.h"
#include "Quorvi/platform/linux/clipboard/ThreadedPasteboard.h"
#include "Quorvi/platform/linux/posix/Descriptor.h"
#include "Quorvi/platform/linux/wayland/WaylandConnection.h"

struct zwlr_data_control_device_v1;
struct zwlr_data_control_manager_v1;
struct zwlr_data_control_offer_v1;
struct zwlr_data_control_source_v1;

namespace quorvi {

// The clipboard during one connection to the compositor. Changes are counted from the compositor's
// announcements, which come in the order of the changes, so that a write is counted once, at its
// place among those of others. Clipboard thread.
class DataControlSession final : public ClipboardSession {
public:
    static bool isOffered(const WaylandConnection& connection);

    // Also throws ClipboardConnectionLost if the compositor offers no clipboard.
    DataControlSession(ClipboardReadLimits limits, const ThreadedPasteboard::Thread& thread,
                       ClipboardKeeper& keeper);
    ~DataControlSession() override;

    std::vector<PasteboardItem> read(const std::function<bool()>& abandoned) override;
    std::optional<std::int64_t> write(std::vector<PasteboardItem> items,
                                      const std::vector<PasteboardItem>& afterwards,
                                      std::optional<std::int64_t> expected) override;
    void restore(std::int64_t expected, std::vector<PasteboardItem> items) override;
    void prepareKeeper(const std::vector<PasteboardItem>& items) override {
        keeper_.prepare(items);
    }
    bool isOffering() override;
    bool handOver() override;
    void wait() override;

    bool isEmpty();
    // Serves other programs until the clipboard changes, and returns whether it has within `limit`.
    bool waitForChange(Duration limit);

private:
    using Clock = std::chrono::steady_clock;
    struct Listeners;
    struct Offer {
        zwlr_data_control_offer_v1* proxy = nullptr;
        std::vector<std::string> types;
        ~Offer();
    };
    // What a program is being sent.
    struct Delivery {
        std::unique_ptr<Descriptor> pipe;
        std::shared_ptr<const Bytes> data;
        std::size_t sent = 0;
        Clock::time_point lastProgress;
    };
    // What is being read.
    struct Arrival;

    void send(const std::string& type, int descriptor);
    void cancelled();
    void selectionChanged(zwlr_data_control_offer_v1* proxy);
    void deliver();
    void waitForAny(std::vector<pollfd>& ready, Duration time);
    std::vector<Arrival> requestAll();
    void receiveAll(std::vector<Arrival>& arrivals, const std::function<bool()>& abandoned);
    void receive(Arrival& arrival, Clock::time_point& lastProgress);
    void emptyWake() const;
    void synchronise();

    const ClipboardReadLimits limits_;
    const ThreadedPasteboard::Thread& thread_;
    ClipboardKeeper& keeper_;
    std::atomic<std::int64_t>& changeCount_ = thread_.changeCount;
    WaylandConnection connection_;
    zwlr_data_control_manager_v1* manager_ = nullptr;
    zwlr_data_control_device_v1* device_ = nullptr;
    std::vector<std::unique_ptr<Offer>> announced_;  // offers that are not the selection yet
    std::unique_ptr<Offer> selection_;
    zwlr_data_control_source_v1* source_ = nullptr;  // ours, while it is the selection
    std::vector<PasteboardItem> items_;              // what it offers
    std::optional<std::int64_t> replacedAt_;         // the count when our source lost the selection
    std::list<Delivery> deliveries_;
    bool hasStarted_ = false;
};

}  // namespace quorvi
