#include "Quorvi/platform/linux/x11/desktop/X11ActiveApplication.h"

#include <xcb/res.h>

#include <utility>

#include "Quorvi/platform/linux/posix/ProcessName.h"
#include "Quorvi/platform/linux/xdg/ApplicationName.h"

namespace quorvi {

X11ActiveApplication::X11ActiveApplication(const X11Connection& connection)
    : connection_(connection),
      activeWindowAtom_(connection.atom("_NET_ACTIVE_WINDOW")),
      processAtom_(connection.atom("_NET_WM_PID")) {
    const auto* extension = xcb_get_extension_data(connection.get(), &xcb_res_id);
    canAskForClients_ = extension != nullptr && extension->present;
}

std::optional<RunningApplication> X11ActiveApplication::look() {
    const auto window = connection_.number(connection_.root(), activeWindowAtom_, XCB_ATOM_WINDOW);
    if (!window || *window == XCB_NONE) return std::nullopt;
    const auto pid = processOf(*window);
    if (pid <= 0) return std::nullopt;
    return RunningApplication{pid, nameOf(*window, pid)};
}

pid_t X11ActiveApplication::processOf(xcb_window_t window) const {
    // The server knows the process of a local connection; the window's own property may be
    // missing, or a process id inside a container.
    if (canAskForClients_) {
        auto* c = connection_.get();
        const xcb_res_client_id_spec_t asked{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
        if (const auto reply = connection_.reply<xcb_res_query_client_ids_reply>(
                xcb_res_query_client_ids(c, 1, &asked))) {
            auto ids = xcb_res_query_client_ids_ids_iterator(reply.get());
            for (; ids.rem > 0; xcb_res_client_id_value_next(&ids))
                if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
                    xcb_res_client_id_value_value_length(ids.data) > 0)
                    return static_cast<pid_t>(*xcb_res_client_id_value_value(ids.data));
        }
    }
    return static_cast<pid_t>(
        connection_.number(window, processAtom_, XCB_ATOM_CARDINAL).value_or(0));
}

std::string X11ActiveApplication::nameOf(xcb_window_t window, pid_t pid) {
    const auto windowClass = x11WindowClass(connection_, window);
    const auto& [instance, className] = windowClass;
    if (windowClass.isEmpty()) return processName(pid);
    const auto known = names_.find(windowClass);
    if (known != names_.end()) return known->second;
    unnamed_ = windowClass;
    return className.empty() ? instance : className;
}

bool X11ActiveApplication::lookUpName() {
    const auto windowClass = std::exchange(unnamed_, std::nullopt);
    if (!windowClass) return false;
    const auto& [instance, className] = *windowClass;
    auto name = installedApplicationName(instance, className);
    if (name.empty()) name = className.empty() ? instance : className;
    names_.emplace(*windowClass, std::move(name));
    return true;
}

}  // namespace quorvi
