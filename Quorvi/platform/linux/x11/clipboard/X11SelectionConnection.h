#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/clipboard/ClipboardSession.h"
#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// The content of a window's property.
struct X11Property {
    std::uint32_t type = 0;  // 0 if there is no such property
    int format = 8;
    Bytes data;  // units of 16 and 32 bits in this machine's byte order
};

// An event of the clipboard traffic, decoded. Fields that a kind doesn't name are 0.
struct X11SelectionEvent {
    enum class Kind {
        request,          // somebody (window) asks us for target into property
        reply,            // an owner has answered our request: target, property, time
        propertySet,      // window, property
        propertyDeleted,  // window, property
        windowDestroyed,  // window
        ownerChanged      // window is the new owner or 0, time that of its ownership
    };
    Kind kind = Kind::request;
    std::uint32_t window = 0;
    std::uint32_t target = 0;
    std::uint32_t property = 0;
    std::uint32_t time = 0;
};

// The X server went away, or was never there.
struct X11ConnectionLost : ClipboardConnectionLost {};

// A connection to the X server for clipboard traffic only, with one unmapped window. Used by the
// clipboard's thread. Every operation throws X11ConnectionLost once the server is gone.
class X11SelectionConnection {
public:
    using Handler = std::function<void(const X11SelectionEvent&)>;

    // wait() ends when `wakeFd` becomes readable, and empties it. An empty `display` is $DISPLAY.
    X11SelectionConnection(const std::string& display, int wakeFd);

    // Called for every event, in order, inside wait() and sync().
    void setHandler(Handler handler) { handler_ = std::move(handler); }

    std::uint32_t window() const { return window_; }
    const X11Connection& connection() const { return connection_; }
    std::uint32_t clipboard() const { return clipboard_; }

    // Atoms and their names, remembered; a list costs one round trip.
    std::uint32_t atom(const std::string& name);
    std::vector<std::uint32_t> atoms(const std::vector<std::string>& names);
    std::vector<std::string> names(const std::vector<std::uint32_t>& atoms);

    // Handles the pending events; without any, waits for some until `limit`.
    void wait(TimePoint limit);
    // Handles all events of the server's work up to now.
    void sync();
    void flush();

    // The server's time now, for the ownership of a selection. Handles events meanwhile.
    std::uint32_t serverTime();

    std::uint32_t clipboardOwner();
    void setClipboardOwner(std::uint32_t window, std::uint32_t time);
    void convertClipboard(std::uint32_t target, std::uint32_t property, std::uint32_t time);

    // Reads a property whole and deletes it.
    X11Property takeProperty(std::uint32_t window, std::uint32_t property);
    // The same, appending its data to `whole`. Returns false if there is no such property.
    bool takeProperty(std::uint32_t window, std::uint32_t property, X11Property& whole);
    X11Property readProperty(std::uint32_t window, std::uint32_t property);
    void deleteProperty(std::uint32_t window, std::uint32_t property);
    void setProperty(std::uint32_t window, std::uint32_t property, std::uint32_t type, int format,
                     std::span<const std::uint8_t> data);
    // Turns on or off the events of another client's window: its properties and its destruction.
    void watch(std::uint32_t window, bool on);
    // Answers a request; property 0 refuses it.
    void answer(const X11SelectionEvent& request, std::uint32_t property);

private:
    void check() const;
    bool dispatchQueued();
    void dispatch(const xcb_generic_event_t& event);
    bool property(std::uint32_t window, std::uint32_t property, bool remove, X11Property& whole);

    X11Connection connection_;
    int wakeFd_;
    Handler handler_;
    std::uint32_t window_ = 0;
    std::uint32_t clipboard_ = 0;
    std::uint32_t timeProbe_ = 0;
    std::uint32_t probedTime_ = 0;
    int firstXFixesEvent_ = 0;
    std::map<std::string, std::uint32_t> atoms_;
    std::map<std::uint32_t, std::string> names_;
};

}  // namespace quorvi
