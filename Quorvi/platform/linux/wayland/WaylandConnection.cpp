#include "Quorvi/platform/linux/wayland/WaylandConnection.h"

#include <poll.h>
#include <wayland-client.h>

#include <algorithm>
#include <cerrno>
#include <chrono>

namespace quorvi {
namespace {

// KWin 5 reads the whole program at each connection, to see whether it may have what its desktop
// entry asks for, and does nothing else meanwhile. Several connections wait for each other.
constexpr Duration greetingLimit = std::chrono::seconds(20);

}  // namespace

struct WaylandConnection::Listeners {
    static void global(void* data, wl_registry*, std::uint32_t name, const char* interface,
                       std::uint32_t version) {
        static_cast<WaylandConnection*>(data)->globals_.emplace(interface, Global{name, version});
    }
    static void globalRemoved(void* data, wl_registry*, std::uint32_t name) {
        std::erase_if(static_cast<WaylandConnection*>(data)->globals_,
                      [name](const auto& entry) { return entry.second.name == name; });
    }
    static constexpr wl_registry_listener registry{global, globalRemoved};

    static void done(void* data, wl_callback*, std::uint32_t) {
        (*static_cast<std::function<void()>*>(data))();
    }
    static constexpr wl_callback_listener callback{done};
};

WaylandConnection::WaylandConnection() : display_(wl_display_connect(nullptr)) {
    if (!display_) return;
    registry_ = wl_display_get_registry(display_);
    wl_registry_add_listener(registry_, &Listeners::registry, this);
    if (!synchronise(greetingLimit)) lose();
}

WaylandConnection::~WaylandConnection() {
    if (seat_) wl_seat_destroy(seat_);
    if (registry_) wl_registry_destroy(registry_);
    if (display_) wl_display_disconnect(display_);
}

int WaylandConnection::fileDescriptor() const {
    return wl_display_get_fd(display_);
}

std::uint32_t WaylandConnection::versionOf(const std::string& interface) const {
    const auto found = globals_.lower_bound(interface);
    return found == globals_.end() || found->first != interface ? 0 : found->second.version;
}

void* WaylandConnection::bindGlobal(const wl_interface& interface, std::uint32_t version) {
    const auto found = globals_.lower_bound(interface.name);
    if (found == globals_.end() || found->first != interface.name) return nullptr;
    return wl_registry_bind(registry_, found->second.name, &interface,
                            std::min(version, found->second.version));
}

std::vector<void*> WaylandConnection::bindEach(const wl_interface& interface,
                                               std::uint32_t version) {
    std::vector<void*> all;
    const auto [first, last] = globals_.equal_range(interface.name);
    for (auto one = first; one != last; ++one)
        all.push_back(wl_registry_bind(registry_, one->second.name, &interface,
                                       std::min(version, one->second.version)));
    return all;
}

wl_seat* WaylandConnection::seat() {
    if (!seat_) seat_ = bind<wl_seat>(wl_seat_interface, 1);
    return seat_;
}

void WaylandConnection::flush() {
    if (isAlive() && wl_display_flush(display_) < 0 && errno != EAGAIN) lose();
}

bool WaylandConnection::dispatchQueued() {
    const auto count = wl_display_dispatch_pending(display_);
    if (count < 0) lose();
    return count > 0;
}

bool WaylandConnection::dispatch() {
    return wait(Duration::zero());
}

bool WaylandConnection::wait(Duration time, int other) {
    if (!isAlive()) return false;
    while (wl_display_prepare_read(display_) != 0)
        if (dispatchQueued()) time = Duration::zero();
    flush();
    pollfd ready[] = {{fileDescriptor(), POLLIN, 0}, {other, POLLIN, 0}};
    const auto limit = std::chrono::ceil<std::chrono::milliseconds>(time).count();
    const int count = poll(ready, 2, static_cast<int>(std::min<std::int64_t>(limit, 1 << 30)));
    if (count > 0 && ready[0].revents != 0) {
        if (wl_display_read_events(display_) < 0) lose();
    } else {
        wl_display_cancel_read(display_);
    }
    dispatchQueued();
    return isAlive();
}

bool WaylandConnection::synchronise(Duration limit, std::function<void()> answered) {
    if (!isAlive()) return false;
    bool isDone = false;
    std::function<void()> finish = [&] {
        isDone = true;
        answered();
    };
    const WaylandObject<wl_callback, wl_callback_destroy> callback(wl_display_sync(display_));
    wl_callback_add_listener(callback.get(), &Listeners::callback, &finish);
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!isDone) {
        const auto left = end - std::chrono::steady_clock::now();
        if (left <= Duration::zero() || !wait(std::chrono::duration_cast<Duration>(left)))
            return false;
    }
    return true;
}

}  // namespace quorvi
