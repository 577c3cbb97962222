#include "tests/support/clipboard/ForeignRequestor.h"

namespace quorvi::test {

ForeignRequestor::ForeignRequestor() {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    window_ = xcb_generate_id(c_);
    xcb_create_window(c_, 0, window_, connection_.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, 0, XCB_CW_EVENT_MASK, &events);
}

bool ForeignRequestor::request(const std::string& target, std::uint32_t time) {
    xcb_convert_selection(c_, window_, atom("CLIPBOARD"), atom(target), property_, time);
    xcb_flush(c_);
    return next<xcb_selection_notify_event_t>(XCB_SELECTION_NOTIFY).property != 0;
}

Bytes ForeignRequestor::take(std::uint32_t property) {
    const auto cookie = xcb_get_property(c_, 1, window_, property, 0, 0, 1U << 28);
    const auto reply = ownXcb(xcb_get_property_reply(c_, cookie, nullptr));
    type = reply->type;
    const auto* data = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
    return {data, data + xcb_get_property_value_length(reply.get())};
}

std::vector<std::uint32_t> ForeignRequestor::takeUnits() {
    const auto data = take();
    std::vector<std::uint32_t> units(data.size() / 4);
    std::memcpy(units.data(), data.data(), units.size() * 4);
    return units;
}

Bytes ForeignRequestor::takePieces() {
    take();
    Bytes whole;
    for (;;) {
        const auto e = next<xcb_property_notify_event_t>(XCB_PROPERTY_NOTIFY);
        if (e.state != XCB_PROPERTY_NEW_VALUE || e.atom != property_) continue;
        const auto piece = take();
        if (type == XCB_NONE) continue;
        if (piece.empty()) return whole;
        whole.insert(whole.end(), piece.begin(), piece.end());
    }
}

}  // namespace quorvi::test
