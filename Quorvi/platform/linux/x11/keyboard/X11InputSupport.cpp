#include "Quorvi/platform/linux/x11/keyboard/X11InputSupport.h"

#include <xcb/xinput.h>
#include <xcb/xtest.h>

#define explicit explicitComponents  // the XKB header names a field with a C++ keyword
#include <xcb/xkb.h>
#undef explicit

#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "Quorvi/platform/linux/x11/keyboard/X11Layout.h"

namespace quorvi {

bool x11InputHookIsPossible() {
    const X11Connection connection;
    if (!connection.isAlive()) return false;
    for (auto* extension : {&xcb_input_id, &xcb_test_id, &xcb_xkb_id}) {
        const auto* data = xcb_get_extension_data(connection.get(), extension);
        if (data == nullptr || !data->present) return false;
    }
    const auto cookie = xcb_input_xi_query_version(connection.get(), 2, 2);
    const auto version = connection.reply<xcb_input_xi_query_version_reply>(cookie);
    return version && (version->major_version > 2 ||
                       (version->major_version == 2 && version->minor_version >= 2));
}

bool x11RightAltIsAltGr() {
    const X11Connection connection;
    if (!connection.isAlive()) return false;
    const auto* data = xcb_get_extension_data(connection.get(), &xcb_xkb_id);
    if (data == nullptr || !data->present) return false;
    const auto cookie = xcb_xkb_use_extension(connection.get(), 1, 0);
    if (!connection.reply<xcb_xkb_use_extension_reply>(cookie)) return false;
    const auto layout = X11Layout::fetch(connection);
    return layout && layout->shiftsLevels(positionOfKeyCode(keyCode::rightOption));
}

}  // namespace quorvi
