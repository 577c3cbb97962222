#include "Quorvi/platform/linux/x11/desktop/X11ActiveApplication.h"

#include <gio/gdesktopappinfo.h>
#include <xcb/res.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace quorvi {
namespace {

std::string lowered(std::string text) {
    for (auto& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

// The name under which the installed application with this window class is offered in menus.
std::string desktopEntryName(const std::string& instance, const std::string& className) {
    for (const auto& id : {className, lowered(className), instance}) {
        if (id.empty()) continue;
        auto* info = g_desktop_app_info_new((id + ".desktop").c_str());
        if (info == nullptr) continue;
        std::string name = g_app_info_get_name(G_APP_INFO(info));
        g_object_unref(info);
        return name;
    }
    std::string name;
    GList* all = g_app_info_get_all();
    for (GList* item = all; item != nullptr && name.empty(); item = item->next) {
        auto* info = G_DESKTOP_APP_INFO(item->data);
        const char* declared = g_desktop_app_info_get_startup_wm_class(info);
        if (declared != nullptr && (className == declared || instance == declared))
            name = g_app_info_get_name(G_APP_INFO(info));
    }
    // GTK names a window after its program. Several entries may start it, in no certain order: the
    // one that asks the least of it stands for the program, another one for its settings.
    std::string shortest;
    for (GList* item = name.empty() ? all : nullptr; item != nullptr; item = item->next) {
        auto* info = G_APP_INFO(item->data);
        const char* program = g_app_info_get_executable(info);
        if (program == nullptr || instance != std::filesystem::path(program).filename()) continue;
        const char* given = g_app_info_get_commandline(info);
        const std::string command = given ? given : program;
        if (!name.empty() &&
            std::pair(command.size(), command) >= std::pair(shortest.size(), shortest))
            continue;
        shortest = command;
        name = g_app_info_get_name(info);
    }
    g_list_free_full(all, g_object_unref);
    return name;
}

std::string commandOf(pid_t pid) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/comm");
    std::string name;
    std::getline(file, name);
    return name;
}

}  // namespace

X11ActiveApplication::X11ActiveApplication(const X11Connection& connection)
    : connection_(connection),
      activeWindowAtom_(connection.atom("_NET_ACTIVE_WINDOW")),
      processAtom_(connection.atom("_NET_WM_PID")) {
    const auto* extension = xcb_get_extension_data(connection.get(), &xcb_res_id);
    canAskForClients_ = extension != nullptr && extension->present;
}

std::optional<RunningApplication> X11ActiveApplication::look() {
    const auto window = number(connection_.root(), activeWindowAtom_, XCB_ATOM_WINDOW);
    if (!window || *window == XCB_NONE) return std::nullopt;
    const auto pid = processOf(*window);
    if (pid <= 0) return std::nullopt;
    return RunningApplication{pid, nameOf(*window, pid)};
}

XcbPointer<xcb_get_property_reply_t> X11ActiveApplication::property(xcb_window_t window,
                                                                    xcb_atom_t name,
                                                                    xcb_atom_t type,
                                                                    std::uint32_t words) const {
    auto* c = connection_.get();
    const auto cookie = xcb_get_property(c, 0, window, name, type, 0, words);
    return ownXcb(xcb_get_property_reply(c, cookie, nullptr));
}

std::optional<std::uint32_t> X11ActiveApplication::number(xcb_window_t window, xcb_atom_t name,
                                                          xcb_atom_t type) const {
    const auto reply = property(window, name, type, 1);
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) < 4)
        return std::nullopt;
    return *static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
}

pid_t X11ActiveApplication::processOf(xcb_window_t window) const {
    // The server knows the process behind a local connection; what a window says of itself may be
    // missing, or be a number inside a container.
    if (canAskForClients_) {
        auto* c = connection_.get();
        const xcb_res_client_id_spec_t asked{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
        const auto cookie = xcb_res_query_client_ids(c, 1, &asked);
        if (const auto reply = ownXcb(xcb_res_query_client_ids_reply(c, cookie, nullptr))) {
            auto ids = xcb_res_query_client_ids_ids_iterator(reply.get());
            for (; ids.rem > 0; xcb_res_client_id_value_next(&ids))
                if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
                    xcb_res_client_id_value_value_length(ids.data) > 0)
                    return static_cast<pid_t>(*xcb_res_client_id_value_value(ids.data));
        }
    }
    return static_cast<pid_t>(number(window, processAtom_, XCB_ATOM_CARDINAL).value_or(0));
}

std::pair<std::string, std::string> X11ActiveApplication::classOf(xcb_window_t window) const {
    const auto reply = property(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 256);
    if (!reply) return {};
    const std::string_view all(
        static_cast<const char*>(xcb_get_property_value(reply.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    const auto instance = all.substr(0, all.find('\0'));
    if (instance.size() == all.size()) return {std::string(instance), {}};
    const auto rest = all.substr(instance.size() + 1);
    return {std::string(instance), std::string(rest.substr(0, rest.find('\0')))};
}

std::string X11ActiveApplication::nameOf(xcb_window_t window, pid_t pid) {
    const auto windowClass = classOf(window);
    const auto& [instance, className] = windowClass;
    if (className.empty() && instance.empty()) return commandOf(pid);
    const auto known = names_.find(windowClass);
    if (known != names_.end()) return known->second;
    unnamed_ = windowClass;
    return className.empty() ? instance : className;
}

bool X11ActiveApplication::lookUpName() {
    const auto windowClass = std::exchange(unnamed_, std::nullopt);
    if (!windowClass) return false;
    const auto& [instance, className] = *windowClass;
    auto name = desktopEntryName(instance, className);
    if (name.empty()) name = className.empty() ? instance : className;
    names_.emplace(*windowClass, std::move(name));
    return true;
}

}  // namespace quorvi
