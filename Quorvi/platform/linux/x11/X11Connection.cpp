#include "Quorvi/platform/linux/x11/X11Connection.h"

#include <mutex>

namespace quorvi {

namespace {

// One connection at a time: xcb_connect() finds the server's key through libXau, which builds a
// file name in a static buffer that another thread could free.
xcb_connection_t* connect(const std::string& display, int& screen) {
    static std::mutex mutex;
    std::lock_guard lock(mutex);
    return xcb_connect(display.empty() ? nullptr : display.c_str(), &screen);
}

}  // namespace

X11Connection::X11Connection(const std::string& display) {
    int screenNumber = 0;
    connection_ = connect(display, screenNumber);
    if (!isAlive()) return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (; screenNumber > 0 && screens.rem > 1; --screenNumber) xcb_screen_next(&screens);
    if (screens.rem > 0) root_ = screens.data->root;
}

X11Connection::~X11Connection() {
    xcb_disconnect(connection_);
}

xcb_atom_t X11Connection::atom(std::string_view name) const {
    const auto length = static_cast<std::uint16_t>(name.size());
    const auto found =
        reply<xcb_intern_atom_reply>(xcb_intern_atom(connection_, 0, length, name.data()));
    return found ? found->atom : static_cast<xcb_atom_t>(XCB_NONE);
}

X11PropertyReply X11Connection::property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                                         std::uint32_t words) const {
    return reply<xcb_get_property_reply>(
        xcb_get_property(connection_, 0, window, name, type, 0, words));
}

std::optional<std::uint32_t> X11Connection::number(xcb_window_t window, xcb_atom_t name,
                                                   xcb_atom_t type) const {
    const auto found = property(window, name, type, 1);
    const auto numbers = numbersOf(found);
    return numbers.empty() ? std::nullopt : std::optional(numbers.front());
}

xcb_window_t X11Connection::selectionOwner(xcb_atom_t selection) const {
    const auto found =
        reply<xcb_get_selection_owner_reply>(xcb_get_selection_owner(connection_, selection));
    return found ? found->owner : static_cast<xcb_window_t>(XCB_NONE);
}

void X11Connection::synchronise() const {
    reply<xcb_get_input_focus_reply>(xcb_get_input_focus(connection_));
}

std::span<const std::uint8_t> bytesOf(const X11PropertyReply& reply) {
    if (!reply) return {};
    return {static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

std::span<const std::uint32_t> numbersOf(const X11PropertyReply& reply) {
    if (!reply || reply->format != 32) return {};
    const auto bytes = bytesOf(reply);
    return {reinterpret_cast<const std::uint32_t*>(bytes.data()), bytes.size() / 4};
}

}  // namespace quorvi
