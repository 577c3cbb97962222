#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "QuorviCore/async/Scheduler.h"

struct wl_display;
struct wl_interface;
struct wl_registry;
struct wl_seat;

namespace quorvi {

// A connection to a Wayland compositor, for adapter sources only; one thread at a time. A lost
// connection is a state; nothing waits longer than its limit.
class WaylandConnection {
public:
    // Connects to $WAYLAND_DISPLAY and learns what the compositor offers. isAlive() tells whether
    // it succeeded. Waits longer than anything else, as a compositor may be busy when a session
    // begins.
    WaylandConnection();
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    bool isAlive() const { return display_ != nullptr && !isLost_; }
    int fileDescriptor() const;

    // The version of a global that is offered; 0 without it.
    std::uint32_t versionOf(const std::string& interface) const;

    // Binds a global, at most in this version; null without it.
    template <class T>
    T* bind(const wl_interface& interface, std::uint32_t version) {
        return static_cast<T*>(bindGlobal(interface, version));
    }

    // Binds each global of that interface.
    std::vector<void*> bindEach(const wl_interface& interface, std::uint32_t version);

    // The seat, bound at the first call; null without one.
    wl_seat* seat();

    // Sends what was requested. Never waits.
    void flush();
    // Reads what has arrived and calls the listeners. Returns isAlive().
    bool dispatch();
    // Calls the listeners for what an earlier call has read; true if there was something.
    bool dispatchQueued();
    // Returns true when the compositor has carried out all earlier requests and the listeners of
    // their events have been called. `answered` is called in between: after the listeners of what
    // the compositor sent before its answer, and before those of what it sent later.
    bool synchronise(
        Duration limit = std::chrono::seconds(2), std::function<void()> answered = [] {});
    // Waits for events until `time`, and calls the listeners. `other` is a further descriptor that
    // ends the wait when it can be read, -1: none. Returns isAlive().
    bool wait(Duration time, int other = -1);

private:
    void* bindGlobal(const wl_interface& interface, std::uint32_t version);
    void lose() { isLost_ = true; }

    struct Global {
        std::uint32_t name;
        std::uint32_t version;
    };
    struct Listeners;

    wl_display* display_ = nullptr;
    wl_registry* registry_ = nullptr;
    wl_seat* seat_ = nullptr;
    std::multimap<std::string, Global> globals_;  // the first of an interface counts
    bool isLost_ = false;
};

// Destroys a protocol object with its own request: WaylandObject<zwp_…, zwp_…_destroy>.
template <class T, auto destroy>
struct WaylandDestroy {
    void operator()(T* object) const { destroy(object); }
};
template <class T, auto destroy>
using WaylandObject = std::unique_ptr<T, WaylandDestroy<T, destroy>>;

}  // namespace quorvi
