#include "Quorvi/platform/linux/x11/desktop/X11Compositing.h"

#include "Quorvi/platform/linux/x11/X11Connection.h"

namespace quorvi {

bool x11IsComposited() {
    const X11Connection connection;
    if (!connection.isAlive()) return false;
    return connection.selectionOwner(connection.atom("_NET_WM_CM_S0")) != XCB_NONE;
}

}  // namespace quorvi
