#include "Quorvi/platform/linux/x11/desktop/X11Compositing.h"

#include "Quorvi/platform/linux/x11/X11Connection.h"

namespace quorvi {

bool x11IsComposited() {
    const X11Connection connection;
    if (!connection.isAlive()) return false;
    const auto cookie = xcb_get_selection_owner(connection.get(), connection.atom("_NET_WM_CM_S0"));
    const auto owner = ownXcb(xcb_get_selection_owner_reply(connection.get(), cookie, nullptr));
    return owner && owner->owner != XCB_NONE;
}

}  // namespace quorvi
