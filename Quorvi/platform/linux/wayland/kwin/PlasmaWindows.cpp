#include "Quorvi/platform/linux/wayland/kwin/PlasmaWindows.h"

#include <wayland-client.h>

#include "protocols/plasma-windows.h"

namespace quorvi {
namespace {

constexpr std::uint32_t version = 13;
constexpr std::uint32_t activeFlag = 1;

}  // namespace

struct PlasmaWindows::Listeners {
    using Handle = org_kde_plasma_window;
    static PlasmaWindows& self(void* data) { return *static_cast<PlasmaWindows*>(data); }
    static Window& of(void* data, Handle* handle) { return self(data).windows_[handle]; }

    static void desktopShown(void*, org_kde_plasma_window_management*, std::uint32_t) {}
    static void follow(void* data, Handle* handle, std::uint32_t id) {
        of(data, handle).whole.id = id;
        org_kde_plasma_window_add_listener(handle, &window, data);
    }
    static void order(void*, org_kde_plasma_window_management*, wl_array*) {}
    static void orderByName(void*, org_kde_plasma_window_management*, const char*) {}
    // By its number KWin 6.3 says that it is gone.
    static void addedWithName(void* data, org_kde_plasma_window_management* manager,
                              std::uint32_t id, const char* name) {
        follow(data, org_kde_plasma_window_management_get_window_by_uuid(manager, name), id);
    }
    static void added(void* data, org_kde_plasma_window_management* manager, std::uint32_t id) {
        follow(data, org_kde_plasma_window_management_get_window(manager, id), id);
    }
    static constexpr org_kde_plasma_window_management_listener manager{desktopShown, added, order,
                                                                       orderByName, addedWithName};

    static void name(void* data, Handle* handle, const char* name) {
        of(data, handle).whole.name = name;
    }
    static void state(void* data, Handle* handle, std::uint32_t flags) {
        of(data, handle).isActive = (flags & activeFlag) != 0;
    }
    static void removed(void* data, Handle* handle) {
        self(data).windows_.erase(handle);
        org_kde_plasma_window_destroy(handle);
    }
    static void pid(void* data, Handle* handle, std::uint32_t pid) {
        of(data, handle).whole.pid = static_cast<pid_t>(pid);
    }

    static void text(void*, Handle*, const char*) {}
    static void number(void*, Handle*, std::int32_t) {}
    static void nothing(void*, Handle*) {}
    static void parent(void*, Handle*, Handle*) {}
    static void menu(void*, Handle*, const char*, const char*) {}
    static void place(void*, Handle*, std::int32_t, std::int32_t, std::uint32_t, std::uint32_t) {}
    static constexpr org_kde_plasma_window_listener window{
        text,    name, state, number, text, removed, nothing, parent, place,
        nothing, pid,  text,  text,   menu, text,    text,    text};
};

bool PlasmaWindows::isOffered(const WaylandConnection& connection) {
    return connection.versionOf(org_kde_plasma_window_management_interface.name) >= version;
}

PlasmaWindows::PlasmaWindows(WaylandConnection& connection) {
    if (!isOffered(connection)) return;
    manager_ = connection.bind<org_kde_plasma_window_management>(
        org_kde_plasma_window_management_interface, version);
    org_kde_plasma_window_management_add_listener(manager_, &Listeners::manager, this);
}

PlasmaWindows::~PlasmaWindows() {
    for (const auto& [handle, window] : windows_) org_kde_plasma_window_destroy(handle);
    if (manager_) org_kde_plasma_window_management_destroy(manager_);
}

std::optional<FocusedWindow> PlasmaWindows::active() const {
    for (const auto& [handle, window] : windows_)
        if (window.isActive && window.whole.pid != 0) return window.whole;
    return std::nullopt;
}

}  // namespace quorvi
