#include "Quorvi/platform/linux/x11/X11Connection.h"

#include "Quorvi/platform/linux/x11/X11ConnectLock.h"

namespace quorvi {

X11Connection::X11Connection(const std::string& display) {
    int screenNumber = 0;
    {
        const auto lock = lockX11Connecting();
        connection_ = xcb_connect(display.empty() ? nullptr : display.c_str(), &screenNumber);
    }
    if (!isAlive()) return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (; screenNumber > 0 && screens.rem > 1; --screenNumber) xcb_screen_next(&screens);
    if (screens.rem > 0) root_ = screens.data->root;
}

X11Connection::~X11Connection() {
    xcb_disconnect(connection_);
}

xcb_atom_t X11Connection::atom(std::string_view name) const {
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const auto reply = ownXcb(xcb_intern_atom_reply(connection_, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_NONE);
}

void X11Connection::synchronise() const {
    const auto cookie = xcb_get_input_focus(connection_);
    ownXcb(xcb_get_input_focus_reply(connection_, cookie, nullptr));
}

}  // namespace quorvi
