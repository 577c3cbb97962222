#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"
#include "Quorvi/platform/linux/x11/clipboard/X11SelectionConnection.h"

namespace quorvi {

// Offers the clipboard: answers other programs while we own it, large data in pieces (the INCR
// protocol). A transfer that has begun is completed even after the owner has changed. Lives as long
// as its connection, on the clipboard's thread.
class X11SelectionServer {
public:
    explicit X11SelectionServer(X11SelectionConnection& connection);

    // Fetches the atoms that the item needs, so that serve() does not wait.
    void prepare(const PasteboardItem& item);
    // Starts offering a prepared item, owned since the server's time `since`.
    void serve(std::shared_ptr<const PasteboardItem> item, std::uint32_t since);
    void stopServing();

    // The item on offer; null if we do not own the clipboard.
    const std::shared_ptr<const PasteboardItem>& item() const { return item_; }
    std::uint32_t since() const { return since_; }

    // What a request was answered with.
    enum class Given { nothing, description, content };
    Given onRequest(const X11SelectionEvent& request);
    void onPropertyDeleted(const X11SelectionEvent& event);
    void onWindowDestroyed(std::uint32_t window);

    // Drops transfers whose requestors have not taken a piece for 30 s. Returns when to call it
    // again.
    TimePoint dropStalled(TimePoint now);

private:
    struct Offer {
        std::uint32_t target = 0;
        std::uint32_t type = 0;
        int format = 8;
        std::shared_ptr<const Bytes> data;
    };
    struct Transfer {
        std::uint32_t window = 0;
        std::uint32_t property = 0;
        Offer offer;
        std::size_t sent = 0;
        TimePoint deadline{};
    };
    using Transfers = std::list<Transfer>;

    Given deliver(std::uint32_t target, std::uint32_t window, std::uint32_t property);
    Given deliverMultiple(const X11SelectionEvent& request);
    void deliverTargets(std::uint32_t window, std::uint32_t property);
    void deliverOffer(const Offer& offer, std::uint32_t window, std::uint32_t property);
    Transfers::iterator end(Transfers::iterator transfer);

    X11SelectionConnection& connection_;
    std::uint32_t targets_, multiple_, timestamp_, saveTargets_, incr_, null_;
    std::shared_ptr<const PasteboardItem> item_;
    std::uint32_t since_ = 0;
    std::vector<Offer> offers_;
    Transfers transfers_;
};

}  // namespace quorvi
