#include "Quorvi/platform/linux/x11/X11ActiveWindow.h"

namespace quorvi {

xcb_window_t x11ActiveWindow(const X11Connection& connection) {
    const auto atom = connection.atom("_NET_ACTIVE_WINDOW");
    return connection.number(connection.root(), atom, XCB_ATOM_WINDOW).value_or(XCB_NONE);
}

X11WindowClass x11WindowClass(const X11Connection& connection, xcb_window_t window) {
    constexpr std::uint32_t words = 256;
    const auto reply = connection.property(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, words);
    const auto bytes = bytesOf(reply);
    const std::string_view all(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto instance = all.substr(0, all.find('\0'));
    if (instance.size() == all.size()) return {std::string(instance), {}};
    const auto rest = all.substr(instance.size() + 1);
    return {std::string(instance), std::string(rest.substr(0, rest.find('\0')))};
}

}  // namespace quorvi
