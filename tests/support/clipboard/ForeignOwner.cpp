#include "tests/support/clipboard/ForeignOwner.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

namespace quorvi::test {

ForeignOwner::ForeignOwner(std::vector<PasteboardItem> items, Manners manners)
    : connection_(std::in_place), manners_(std::move(manners)), wakeFd_(eventfd(0, EFD_CLOEXEC)) {
    targets_ = connection_->atom("TARGETS");
    incr_ = connection_->atom("INCR");
    for (const auto& item : items)
        for (const auto& one : item.representations)
            offers_.emplace_back(connection_->atom(one.type), one);
    own(connection_->atom("CLIPBOARD"), !offers_.empty());
    thread_ = std::thread([this] { work(); });
}

ForeignOwner::~ForeignOwner() {
    const std::uint64_t one = 1;
    ending_ = true;
    [[maybe_unused]] const auto written = write(wakeFd_, &one, sizeof one);
    thread_.join();
    close(wakeFd_);
}

void ForeignOwner::own(xcb_atom_t clipboard, bool owning) {
    auto* c = connection_->get();
    const auto window = xcb_generate_id(c);
    xcb_create_window(c, 0, window, connection_->root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      0, 0, nullptr);
    xcb_set_selection_owner(c, owning ? window : XCB_NONE, clipboard, XCB_CURRENT_TIME);
    const auto cookie = xcb_get_selection_owner(c, clipboard);
    const auto owner = ownXcb(xcb_get_selection_owner_reply(c, cookie, nullptr));
    if (!owner || (owning && owner->owner != window))
        throw std::runtime_error("could not take the clipboard");
}

void ForeignOwner::work() {
    pollfd ready[] = {{connection_->fileDescriptor(), POLLIN, 0}, {wakeFd_, POLLIN, 0}};
    while (!ending_) {
        while (const auto event = ownXcb(xcb_poll_for_event(connection_->get()))) {
            handle(*event);
            if (!connection_) return;
        }
        xcb_flush(connection_->get());
        poll(ready, 2, -1);
    }
}

void ForeignOwner::handle(const xcb_generic_event_t& event) {
    if (xcbEventType(event) == XCB_SELECTION_REQUEST)
        answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    if (xcbEventType(event) != XCB_PROPERTY_NOTIFY) return;
    const auto& e = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (e.state == XCB_PROPERTY_DELETE) sendPiece(e.window, e.atom);
}

void ForeignOwner::answer(const xcb_selection_request_event_t& request) {
    ++requests_;
    if (manners_.silent) return;
    pollfd wake{wakeFd_, POLLIN, 0};
    if (poll(&wake, 1, static_cast<int>(manners_.delay.count())) > 0) return;
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
    xcb_send_event(connection_->get(), 0, request.requestor, 0, message.bytes);
}

bool ForeignOwner::deliver(const xcb_selection_request_event_t& request) {
    if (request.target == targets_) {
        std::vector<std::uint32_t> all{targets_};
        for (const auto& offer : offers_) all.push_back(offer.first);
        put(request.requestor, request.property, XCB_ATOM_ATOM, 32, all.data(), all.size() * 4);
        return true;
    }
    const auto offer = std::ranges::find(offers_, request.target, [](auto& o) { return o.first; });
    if (offer == offers_.end() || offer->second.type == manners_.refusedType) return false;
    ++reads_;
    const auto& content = offer->second;
    if (content.data->size() <= manners_.pieceSize) {
        put(request.requestor, request.property, content, 0, content.data->size());
        return true;
    }
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_->get(), request.requestor, XCB_CW_EVENT_MASK, &events);
    const auto size = static_cast<std::uint32_t>(content.data->size());
    put(request.requestor, request.property, incr_, 32, &size, 4);
    transfers_.push_back({request.requestor, request.property, &content, 0, 0});
    return true;
}

void ForeignOwner::sendPiece(std::uint32_t window, std::uint32_t property) {
    const auto transfer = std::ranges::find_if(
        transfers_, [&](auto& each) { return each.window == window && each.property == property; });
    if (transfer == transfers_.end()) return;
    if (transfer->pieces++ == manners_.dyingPiece) {
        connection_.reset();
        return;
    }
    const auto& content = *transfer->content;
    const auto size = std::min(manners_.pieceSize, content.data->size() - transfer->sent);
    put(window, property, content, transfer->sent, size);
    transfer->sent += size;
    if (size == 0) transfers_.erase(transfer);
}

void ForeignOwner::put(std::uint32_t window, std::uint32_t property, std::uint32_t type, int format,
                       const void* data, std::size_t bytes) {
    const auto units = static_cast<std::uint32_t>(bytes / static_cast<std::size_t>(format / 8));
    xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, window, property, type,
                        static_cast<std::uint8_t>(format), units, data);
}

}  // namespace quorvi::test
