#pragma once

#include <xcb/xcb.h>

#include <cstring>
#include <string>
#include <vector>

#include "QuorviCore/Bytes.h"
#include "tests/linux/support/ForeignOwner.h"

namespace quorvi::test {

// Another program that reads the clipboard, one step of the protocol at a time. Blocks its caller
// while it waits for an answer.
class ForeignRequestor {
public:
    ForeignRequestor() : connection_(connectToX()) {
        const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        window_ = xcb_generate_id(connection_);
        xcb_create_window(connection_, 0, window_, screen->root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, 0, XCB_CW_EVENT_MASK, &events);
        property_ = atom("FOREIGN_PROPERTY");
    }
    ForeignRequestor(const ForeignRequestor&) = delete;
    ForeignRequestor& operator=(const ForeignRequestor&) = delete;
    ~ForeignRequestor() { xcb_disconnect(connection_); }

    std::uint32_t atom(const std::string& name) { return atomOf(connection_, name); }

    // Whether the owner answers with data, which is then in property().
    bool request(const std::string& target, std::uint32_t time = XCB_CURRENT_TIME) {
        xcb_convert_selection(connection_, window_, atom("CLIPBOARD"), atom(target), property_,
                              time);
        xcb_flush(connection_);
        for (;;) {
            const auto event = next();
            if ((event->response_type & 0x7F) != XCB_SELECTION_NOTIFY) continue;
            return reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property != 0;
        }
    }

    // The type of what is in the property; its data, taken out of it.
    std::uint32_t type = 0;
    Bytes take() { return take(property_); }
    Bytes take(std::uint32_t property) {
        XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            connection_, xcb_get_property(connection_, 1, window_, property, 0, 0, 1U << 28),
            nullptr));
        type = reply->type;
        const auto* data = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
        return {data, data + xcb_get_property_value_length(reply.get())};
    }
    std::vector<std::uint32_t> takeUnits() {
        const auto data = take();
        std::vector<std::uint32_t> units(data.size() / 4);
        std::memcpy(units.data(), data.data(), units.size() * 4);
        return units;
    }
    void put(const std::vector<std::uint32_t>& units) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, property_,
                            atom("ATOM_PAIR"), 32, static_cast<std::uint32_t>(units.size()),
                            units.data());
    }

    // The next piece of a transfer in pieces, empty after the last.
    Bytes nextPiece() {
        for (;;) {
            const auto event = next();
            if ((event->response_type & 0x7F) != XCB_PROPERTY_NOTIFY) continue;
            const auto& e = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
            if (e.state != XCB_PROPERTY_NEW_VALUE || e.atom != property_) continue;
            auto piece = take();
            if (type != XCB_NONE) return piece;
        }
    }

private:
    XReply<xcb_generic_event_t> next() {
        XReply<xcb_generic_event_t> event(xcb_wait_for_event(connection_));
        if (!event) throw std::runtime_error("the X server is gone");
        return event;
    }

    xcb_connection_t* connection_;
    std::uint32_t window_ = 0;
    std::uint32_t property_ = 0;
};

}  // namespace quorvi::test
