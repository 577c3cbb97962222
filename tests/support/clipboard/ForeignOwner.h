#pragma once

#include <atomic>
#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "tests/fakes/PasteboardItems.h"

namespace quorvi::test {

// Another program that owns the clipboard: an X client of its own with a thread of its own, and
// with whatever bad manners a test needs. Owns the clipboard when the constructor returns.
class ForeignOwner {
public:
    struct Manners {
        std::chrono::milliseconds delay{0};  // before each answer
        std::string refusedType = {};        // offered, but refused when asked for
        bool silent = false;                 // never answers
        std::size_t pieceSize = 100'000;     // more than this goes in pieces
        int dyingPiece = -1;                 // disconnects instead of sending this piece
    };

    explicit ForeignOwner(std::vector<PasteboardItem> items) : ForeignOwner(std::move(items), {}) {}
    ForeignOwner(std::vector<PasteboardItem> items, Manners manners);
    ForeignOwner(const ForeignOwner&) = delete;
    ForeignOwner& operator=(const ForeignOwner&) = delete;
    ~ForeignOwner();

    int requests() const { return requests_; }
    int reads() const { return reads_; }  // requests that were answered with what is offered

private:
    struct Transfer {
        std::uint32_t window = 0, property = 0;
        const PasteboardRepresentation* content = nullptr;
        std::size_t sent = 0;
        int pieces = 0;
    };

    void own(xcb_atom_t clipboard, bool owning);

    void work();
    void handle(const xcb_generic_event_t& event);

    // A slow program is slow in its own thread: what comes meanwhile waits.
    void answer(const xcb_selection_request_event_t& request);
    bool deliver(const xcb_selection_request_event_t& request);
    void sendPiece(std::uint32_t window, std::uint32_t property);
    void put(std::uint32_t window, std::uint32_t property, const PasteboardRepresentation& content,
             std::size_t begin, std::size_t size) {
        put(window, property, connection_->atom(content.encoding), content.format,
            content.data->data() + begin, size);
    }
    void put(std::uint32_t window, std::uint32_t property, std::uint32_t type, int format,
             const void* data, std::size_t bytes);

    std::optional<X11Connection> connection_;
    Manners manners_;
    std::atomic<int> requests_{0}, reads_{0};
    std::atomic<bool> ending_{false};
    int wakeFd_;
    std::uint32_t targets_ = 0, incr_ = 0;
    std::vector<std::pair<std::uint32_t, PasteboardRepresentation>> offers_;
    std::vector<Transfer> transfers_;
    std::thread thread_;
};

}  // namespace quorvi::test
