#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace quorvi {

// One connection to the X server, for adapter sources only. XCB rather than Xlib: a lost connection
// is a state to ask for (Xlib exits the process), errors arrive on the connection that caused them
// (Xlib's handlers are process-wide and the toolkit has its own), and every event carries the
// full sequence number of the request it followed. Used by one thread at a time.
class X11Connection {
public:
    // Connects to the named display; an empty name means the one in the environment.
    explicit X11Connection(const std::string& display = {});
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    bool isAlive() const { return xcb_connection_has_error(connection_) == 0; }
    xcb_connection_t* get() const { return connection_; }
    int fileDescriptor() const { return xcb_get_file_descriptor(connection_); }
    xcb_window_t root() const { return root_; }

    xcb_atom_t atom(std::string_view name) const;

    // Returns when the server has carried out everything that was asked of it. The events that
    // arrived in between are queued.
    void synchronise() const;

private:
    xcb_connection_t* connection_;
    xcb_window_t root_ = XCB_NONE;
};

struct FreeXcb {
    void operator()(void* memory) const { std::free(memory); }
};

template <class T>
using XcbPointer = std::unique_ptr<T, FreeXcb>;

template <class T>
XcbPointer<T> ownXcb(T* memory) {
    return XcbPointer<T>(memory);
}

// The response types of an event without the bit that marks a sent one; 0 is an error.
inline int xcbEventType(const xcb_generic_event_t& event) {
    return event.response_type & 0x7F;
}

}  // namespace quorvi
