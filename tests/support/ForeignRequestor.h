#pragma once

#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi::test {

// Another program that reads the clipboard, one step of the protocol at a time. Blocks its caller
// while it waits for an answer.
class ForeignRequestor {
public:
    ForeignRequestor() {
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        window_ = xcb_generate_id(c_);
        xcb_create_window(c_, 0, window_, connection_.root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, 0, XCB_CW_EVENT_MASK, &events);
    }

    std::uint32_t atom(const std::string& name) const { return connection_.atom(name); }

    // Whether the owner answers with data, which is then in property().
    bool request(const std::string& target, std::uint32_t time = XCB_CURRENT_TIME) {
        xcb_convert_selection(c_, window_, atom("CLIPBOARD"), atom(target), property_, time);
        xcb_flush(c_);
        return next<xcb_selection_notify_event_t>(XCB_SELECTION_NOTIFY).property != 0;
    }

    // The type of what is in the property; its data, taken out of it.
    std::uint32_t type = 0;
    Bytes take() { return take(property_); }
    Bytes take(std::uint32_t property) {
        const auto cookie = xcb_get_property(c_, 1, window_, property, 0, 0, 1U << 28);
        const auto reply = ownXcb(xcb_get_property_reply(c_, cookie, nullptr));
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
        xcb_change_property(c_, XCB_PROP_MODE_REPLACE, window_, property_, atom("ATOM_PAIR"), 32,
                            static_cast<std::uint32_t>(units.size()), units.data());
    }
    // The next piece of a transfer in pieces, empty after the last.
    Bytes nextPiece() {
        for (;;) {
            const auto e = next<xcb_property_notify_event_t>(XCB_PROPERTY_NOTIFY);
            if (e.state != XCB_PROPERTY_NEW_VALUE || e.atom != property_) continue;
            auto piece = take();
            if (type != XCB_NONE) return piece;
        }
    }
    // All pieces of a transfer whose announcement is in the property.
    Bytes takePieces() {
        take();
        Bytes whole;
        for (auto piece = nextPiece(); !piece.empty(); piece = nextPiece())
            whole.insert(whole.end(), piece.begin(), piece.end());
        return whole;
    }

private:
    template <class Event>
    Event next(int wanted) {
        for (;;) {
            const auto event = ownXcb(xcb_wait_for_event(c_));
            if (!event) throw std::runtime_error("the X server is gone");
            if (xcbEventType(*event) == wanted) return reinterpret_cast<const Event&>(*event);
        }
    }

    X11Connection connection_;
    xcb_connection_t* c_ = connection_.get();
    std::uint32_t window_ = 0;
    std::uint32_t property_ = connection_.atom("FOREIGN_PROPERTY");
};

}  // namespace quorvi::test
