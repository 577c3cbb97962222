#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvi {

struct FreeXcb {
    void operator()(void* memory) const { std::free(memory); }
};

// A reply or an event, which XCB leaves to its caller to free.
template <class T>
using XcbPointer = std::unique_ptr<T, FreeXcb>;

template <class T>
XcbPointer<T> ownXcb(T* memory) {
    return XcbPointer<T>(memory);
}

using X11PropertyReply = XcbPointer<xcb_get_property_reply_t>;

// A connection to the X server, for adapter sources only; one thread at a time. XCB instead of Xlib
// because a lost connection is a state (Xlib exits the process), errors stay with the connection
// that caused them (Xlib's handlers belong to the process, and the toolkit sets its own), and each
// event has the full sequence number of the last request before it.
class X11Connection {
public:
    // Connects to `display`; an empty name means $DISPLAY. isAlive() tells whether it succeeded.
    explicit X11Connection(const std::string& display = {});
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    bool isAlive() const { return xcb_connection_has_error(connection_) == 0; }
    xcb_connection_t* get() const { return connection_; }
    int fileDescriptor() const { return xcb_get_file_descriptor(connection_); }
    xcb_window_t root() const { return root_; }

    // Waits for the reply to a request: reply<xcb_intern_atom_reply>(xcb_intern_atom(…)). Null if
    // the server answers with an error or the connection is lost.
    template <auto fetch, class Cookie>
    auto reply(Cookie cookie) const {
        return ownXcb(fetch(connection_, cookie, nullptr));
    }

    // The next event, null if there is none. The second one reads nothing from the server, only
    // what an earlier call has read.
    XcbPointer<xcb_generic_event_t> nextEvent() const {
        return ownXcb(xcb_poll_for_event(connection_));
    }
    XcbPointer<xcb_generic_event_t> nextQueuedEvent() const {
        return ownXcb(xcb_poll_for_queued_event(connection_));
    }

    // XCB_NONE if the connection is lost.
    xcb_atom_t atom(std::string_view name) const;

    // The first `words` units of 32 bits of a property. Null if the window is gone.
    X11PropertyReply property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                              std::uint32_t words) const;

    // The first number of a property with 32-bit numbers of this type; nullopt if there is none.
    std::optional<std::uint32_t> number(xcb_window_t window, xcb_atom_t name,
                                        xcb_atom_t type) const;

    // XCB_NONE if nobody owns the selection.
    xcb_window_t selectionOwner(xcb_atom_t selection) const;

    // Returns when the server has carried out all earlier requests. Events that arrive meanwhile
    // are queued.
    void synchronise() const;

private:
    xcb_connection_t* connection_;
    xcb_window_t root_ = XCB_NONE;
};

// The data of a property; empty for a null reply.
std::span<const std::uint8_t> bytesOf(const X11PropertyReply& reply);

// The same as numbers; empty unless the property has units of 32 bits.
std::span<const std::uint32_t> numbersOf(const X11PropertyReply& reply);

// The response types of an event without the bit that marks a sent one; 0 is an error.
inline int xcbEventType(const xcb_generic_event_t& event) {
    return event.response_type & 0x7F;
}

// Compares server times, which are milliseconds and wrap around every seven weeks.
inline bool isLaterTime(xcb_timestamp_t time, xcb_timestamp_t other) {
    return static_cast<std::int32_t>(time - other) > 0;
}

}  // namespace quorvi
