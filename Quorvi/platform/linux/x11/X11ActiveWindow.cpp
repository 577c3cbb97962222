#include "Quorvi/platform/linux/x11/X11ActiveWindow.h"

#include <xcb/res.h>

namespace quorvi {

xcb_window_t x11ActiveWindow(const X11Connection& connection) {
    const auto atom = connection.atom("_NET_ACTIVE_WINDOW");
    return connection.number(connection.root(), atom, XCB_ATOM_WINDOW).value_or(XCB_NONE);
}

pid_t x11ProcessOf(const X11Connection& connection, xcb_window_t window) {
    auto* c = connection.get();
    const auto* extension = xcb_get_extension_data(c, &xcb_res_id);
    if (extension != nullptr && extension->present) {
        const xcb_res_client_id_spec_t asked{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
        if (const auto reply = connection.reply<xcb_res_query_client_ids_reply>(
                xcb_res_query_client_ids(c, 1, &asked))) {
            auto ids = xcb_res_query_client_ids_ids_iterator(reply.get());
            for (; ids.rem > 0; xcb_res_client_id_value_next(&ids))
                if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
                    xcb_res_client_id_value_value_length(ids.data) > 0)
                    return static_cast<pid_t>(*xcb_res_client_id_value_value(ids.data));
        }
    }
    const auto processAtom = connection.atom("_NET_WM_PID");
    return static_cast<pid_t>(
        connection.number(window, processAtom, XCB_ATOM_CARDINAL).value_or(0));
}

bool x11SameClient(const X11Connection& connection, xcb_window_t one, xcb_window_t other) {
    const auto ownPart = xcb_get_setup(connection.get())->resource_id_mask;
    return (one & ~ownPart) == (other & ~ownPart);
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
