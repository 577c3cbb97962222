#pragma once

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"
#include "Quorvi/platform/linux/X11ConnectLock.h"

namespace quorvi::test {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <class T>
using XReply = std::unique_ptr<T, FreeReply>;

inline xcb_connection_t* connectToX() {
    const auto lock = lockX11Connecting();
    return xcb_connect(nullptr, nullptr);
}

inline std::uint32_t atomOf(xcb_connection_t* c, const std::string& name) {
    XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        c, xcb_intern_atom(c, 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
    if (!reply) throw std::runtime_error("no X server");
    return reply->atom;
}

// Another program that owns the clipboard: an X client of its own with a thread of its own, and
// with whatever bad manners a test needs. Owns the clipboard when the constructor returns.
class ForeignOwner {
public:
    struct Manners {
        std::chrono::milliseconds delay{0};  // before each answer
        std::string delayedType = {};        // only this one is delayed
        std::string refusedType = {};        // offered, but refused when asked for
        bool silent = false;                 // never answers
        std::size_t pieceSize = 100'000;     // more than this goes in pieces
        int dyingPiece = -1;                 // disconnects instead of sending this piece
    };

    explicit ForeignOwner(std::vector<PasteboardItem> items) : ForeignOwner(std::move(items), {}) {}
    ForeignOwner(std::vector<PasteboardItem> items, Manners manners)
        : connection_(connectToX()),
          manners_(manners),
          delay_(manners.delay.count()),
          wakeFd_(eventfd(0, EFD_CLOEXEC)) {
        clipboard_ = atomOf(connection_, "CLIPBOARD");
        targets_ = atomOf(connection_, "TARGETS");
        incr_ = atomOf(connection_, "INCR");
        for (const auto& item : items)
            for (const auto& one : item.representations)
                offers_.emplace_back(atomOf(connection_, one.type), one);
        if (!manners_.delayedType.empty()) delayed_ = atomOf(connection_, manners_.delayedType);
        own(!offers_.empty());
        thread_ = std::thread([this] { work(); });
    }
    ForeignOwner(const ForeignOwner&) = delete;
    ForeignOwner& operator=(const ForeignOwner&) = delete;
    ~ForeignOwner() {
        const std::uint64_t one = 1;
        ending_ = true;
        [[maybe_unused]] const auto written = write(wakeFd_, &one, sizeof one);
        thread_.join();
        close(wakeFd_);
        if (connection_) xcb_disconnect(connection_);
    }

    void setDelay(std::chrono::milliseconds delay) { delay_ = delay.count(); }
    int requests() const { return requests_; }

private:
    struct Transfer {
        std::uint32_t window = 0, property = 0;
        const PasteboardRepresentation* content = nullptr;
        std::size_t sent = 0;
        int pieces = 0;
    };

    void own(bool owning) {
        const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        window_ = xcb_generate_id(connection_);
        xcb_create_window(connection_, 0, window_, screen->root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, 0, 0, nullptr);
        xcb_set_selection_owner(connection_, owning ? window_ : XCB_NONE, clipboard_,
                                XCB_CURRENT_TIME);
        XReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
            connection_, xcb_get_selection_owner(connection_, clipboard_), nullptr));
        if (!owner || (owning && owner->owner != window_))
            throw std::runtime_error("could not take the clipboard");
    }

    void work() {
        pollfd ready[] = {{xcb_get_file_descriptor(connection_), POLLIN, 0}, {wakeFd_, POLLIN, 0}};
        while (!ending_ && connection_) {
            while (XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
                handle(*event);
                if (!connection_) return;
            }
            xcb_flush(connection_);
            poll(ready, 2, -1);
        }
    }

    void handle(const xcb_generic_event_t& event) {
        const int type = event.response_type & 0x7F;
        if (type == XCB_SELECTION_REQUEST)
            answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
        if (type == XCB_PROPERTY_NOTIFY) {
            const auto& e = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (e.state == XCB_PROPERTY_DELETE) sendPiece(e.window, e.atom);
        }
    }

    // A slow program is slow in its own thread: what comes meanwhile waits.
    void answer(const xcb_selection_request_event_t& request) {
        ++requests_;
        if (manners_.silent) return;
        pollfd wake{wakeFd_, POLLIN, 0};
        const bool slow = manners_.delayedType.empty() || request.target == delayed_;
        if (slow && delay_ > 0 && poll(&wake, 1, static_cast<int>(delay_.load())) > 0) return;
        union {
            xcb_selection_notify_event_t event;
            char bytes[32];
        } message{};
        message.event.response_type = XCB_SELECTION_NOTIFY;
        message.event.time = request.time;
        message.event.requestor = request.requestor;
        message.event.selection = request.selection;
        message.event.target = request.target;
        message.event.property = deliver(request) ? request.property : XCB_NONE;
        xcb_send_event(connection_, 0, request.requestor, 0, message.bytes);
    }

    bool deliver(const xcb_selection_request_event_t& request) {
        if (request.target == targets_) {
            std::vector<std::uint32_t> all{targets_};
            for (const auto& offer : offers_) all.push_back(offer.first);
            put(request.requestor, request.property, XCB_ATOM_ATOM, 32, all.data(), all.size() * 4);
            return true;
        }
        for (const auto& [atom, content] : offers_) {
            if (atom != request.target || content.type == manners_.refusedType) continue;
            if (content.data->size() > manners_.pieceSize) {
                const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
                xcb_change_window_attributes(connection_, request.requestor, XCB_CW_EVENT_MASK,
                                             &events);
                const auto size = static_cast<std::uint32_t>(content.data->size());
                put(request.requestor, request.property, incr_, 32, &size, 4);
                transfers_.push_back({request.requestor, request.property, &content, 0, 0});
            } else {
                put(request.requestor, request.property, atomOf(connection_, content.encoding),
                    content.format, content.data->data(), content.data->size());
            }
            return true;
        }
        return false;
    }

    void sendPiece(std::uint32_t window, std::uint32_t property) {
        const auto transfer = std::find_if(transfers_.begin(), transfers_.end(), [&](auto& each) {
            return each.window == window && each.property == property;
        });
        if (transfer == transfers_.end()) return;
        if (transfer->pieces++ == manners_.dyingPiece) {
            xcb_disconnect(std::exchange(connection_, nullptr));
            return;
        }
        const auto& content = *transfer->content;
        const auto size = std::min(manners_.pieceSize, content.data->size() - transfer->sent);
        put(window, property, atomOf(connection_, content.encoding), content.format,
            content.data->data() + transfer->sent, size);
        transfer->sent += size;
        if (size == 0) transfers_.erase(transfer);
    }

    void put(std::uint32_t window, std::uint32_t property, std::uint32_t type, int format,
             const void* data, std::size_t bytes) {
        const auto units = static_cast<std::uint32_t>(bytes / static_cast<std::size_t>(format / 8));
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, type,
                            static_cast<std::uint8_t>(format), units, data);
    }

    xcb_connection_t* connection_;
    Manners manners_;
    std::atomic<std::int64_t> delay_;
    std::atomic<int> requests_{0};
    std::atomic<bool> ending_{false};
    int wakeFd_;
    std::uint32_t window_ = 0, clipboard_ = 0, targets_ = 0, incr_ = 0, delayed_ = 0;
    std::vector<std::pair<std::uint32_t, PasteboardRepresentation>> offers_;
    std::vector<Transfer> transfers_;
    std::thread thread_;
};

}  // namespace quorvi::test
