#include "Quorvi/platform/linux/x11/clipboard/X11SelectionConnection.h"

#include <poll.h>
#include <unistd.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <chrono>
#include <limits>

namespace quorvi {

namespace {

// Milliseconds for poll(), rounded up so that a wait never ends early and spins.
int pollTimeout(TimePoint limit) {
    using namespace std::chrono;
    const auto left = ceil<milliseconds>(limit - steady_clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, 3'600'000));
}

}  // namespace

X11SelectionConnection::X11SelectionConnection(const std::string& display, int wakeFd)
    : connection_(display), wakeFd_(wakeFd) {
    check();
    auto* c = connection_.get();
    window_ = xcb_generate_id(c);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window_, connection_.root(), -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    const auto known = atoms({"CLIPBOARD", "QUORVI_TIME"});
    clipboard_ = known[0];
    timeProbe_ = known[1];

    const auto* extension = xcb_get_extension_data(c, &xcb_xfixes_id);
    if (!extension || !extension->present) throw X11ConnectionLost{};
    firstXFixesEvent_ = extension->first_event;
    // The server ignores the extension's requests of a client that has not asked for its version.
    connection_.reply<xcb_xfixes_query_version_reply>(
        xcb_xfixes_query_version(c, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION));
    xcb_xfixes_select_selection_input(c, window_, clipboard_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    flush();
}

void X11SelectionConnection::check() const {
    if (!connection_.isAlive()) throw X11ConnectionLost{};
}

std::uint32_t X11SelectionConnection::atom(const std::string& name) {
    return atoms({name})[0];
}

std::vector<std::uint32_t> X11SelectionConnection::atoms(const std::vector<std::string>& wanted) {
    auto* c = connection_.get();
    std::vector<std::pair<std::string, xcb_intern_atom_cookie_t>> asked;
    for (const auto& name : wanted)
        if (!atoms_.contains(name))
            asked.emplace_back(
                name, xcb_intern_atom(c, 0, static_cast<std::uint16_t>(name.size()), name.data()));
    for (const auto& [name, cookie] : asked) {
        const auto reply = connection_.reply<xcb_intern_atom_reply>(cookie);
        if (!reply) throw X11ConnectionLost{};
        atoms_[name] = reply->atom;
        names_[reply->atom] = name;
    }
    std::vector<std::uint32_t> found;
    for (const auto& name : wanted) found.push_back(atoms_.at(name));
    return found;
}

std::vector<std::string> X11SelectionConnection::names(const std::vector<std::uint32_t>& wanted) {
    auto* c = connection_.get();
    std::vector<std::pair<std::uint32_t, xcb_get_atom_name_cookie_t>> asked;
    for (const auto atom : wanted)
        if (!names_.contains(atom)) asked.emplace_back(atom, xcb_get_atom_name(c, atom));
    for (const auto& [atom, cookie] : asked) {
        const auto reply = connection_.reply<xcb_get_atom_name_reply>(cookie);
        check();
        if (!reply) continue;  // no atom at all
        const std::string name(
            xcb_get_atom_name_name(reply.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get())));
        names_[atom] = name;
        atoms_[name] = atom;
    }
    std::vector<std::string> found;
    for (const auto atom : wanted) found.push_back(names_.contains(atom) ? names_.at(atom) : "");
    return found;
}

void X11SelectionConnection::flush() {
    xcb_flush(connection_.get());
    check();
}

void X11SelectionConnection::wait(TimePoint limit) {
    flush();
    if (dispatchQueued()) return;
    pollfd ready[] = {{connection_.fileDescriptor(), POLLIN, 0}, {wakeFd_, POLLIN, 0}};
    if (poll(ready, 2, pollTimeout(limit)) <= 0) return;
    if (ready[1].revents) {
        std::uint64_t wakes = 0;
        [[maybe_unused]] const auto got = read(wakeFd_, &wakes, sizeof wakes);
    }
    dispatchQueued();
    check();
}

void X11SelectionConnection::sync() {
    connection_.synchronise();
    check();
    dispatchQueued();
}

bool X11SelectionConnection::dispatchQueued() {
    bool any = false;
    while (const auto event = connection_.nextEvent()) {
        any = true;
        dispatch(*event);
    }
    if (any) flush();
    return any;
}

// Errors arrive as events of type 0 and are dropped: they come from requestors that have
// vanished, whose transfers end by their window's destruction or by their deadline.
void X11SelectionConnection::dispatch(const xcb_generic_event_t& event) {
    using Kind = X11SelectionEvent::Kind;
    const int type = xcbEventType(event);
    if (type == XCB_SELECTION_REQUEST) {
        const auto& e = reinterpret_cast<const xcb_selection_request_event_t&>(event);
        // Requestors of an old convention leave the property to the owner.
        const auto property = e.property == XCB_NONE ? e.target : e.property;
        X11SelectionEvent request{Kind::request, e.requestor, e.target, property, e.time};
        if (e.selection == clipboard_ && handler_)
            handler_(request);
        else
            answer(request, XCB_NONE);
    } else if (type == XCB_SELECTION_NOTIFY) {
        const auto& e = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
        if (handler_) handler_({Kind::reply, e.requestor, e.target, e.property, e.time});
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& e = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (e.window == window_ && e.atom == timeProbe_) {
            probedTime_ = e.time;
            return;
        }
        const auto kind =
            e.state == XCB_PROPERTY_DELETE ? Kind::propertyDeleted : Kind::propertySet;
        if (handler_) handler_({kind, e.window, 0, e.atom, e.time});
    } else if (type == XCB_DESTROY_NOTIFY) {
        const auto& e = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        if (handler_) handler_({Kind::windowDestroyed, e.window, 0, 0, 0});
    } else if (type == firstXFixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY) {
        const auto& e = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
        if (e.selection == clipboard_ && handler_)
            handler_({Kind::ownerChanged, e.owner, 0, 0, e.selection_timestamp});
    }
}

std::uint32_t X11SelectionConnection::serverTime() {
    // Appending nothing to a property changes nothing, but is announced with the time.
    probedTime_ = 0;
    xcb_change_property(connection_.get(), XCB_PROP_MODE_APPEND, window_, timeProbe_,
                        XCB_ATOM_INTEGER, 32, 0, nullptr);
    sync();
    if (probedTime_ == 0) throw X11ConnectionLost{};
    return probedTime_;
}

std::uint32_t X11SelectionConnection::clipboardOwner() {
    const auto owner = connection_.selectionOwner(clipboard_);
    check();
    dispatchQueued();
    return owner;
}

void X11SelectionConnection::setClipboardOwner(std::uint32_t window, std::uint32_t time) {
    xcb_set_selection_owner(connection_.get(), window, clipboard_, time);
}

void X11SelectionConnection::convertClipboard(std::uint32_t target, std::uint32_t property,
                                              std::uint32_t time) {
    xcb_convert_selection(connection_.get(), window_, clipboard_, target, property, time);
    flush();
}

X11Property X11SelectionConnection::takeProperty(std::uint32_t window, std::uint32_t property) {
    X11Property taken;
    takeProperty(window, property, taken);
    return taken;
}

bool X11SelectionConnection::takeProperty(std::uint32_t window, std::uint32_t property,
                                          X11Property& whole) {
    return this->property(window, property, true, whole);
}

X11Property X11SelectionConnection::readProperty(std::uint32_t window, std::uint32_t property) {
    X11Property read;
    this->property(window, property, false, read);
    return read;
}

bool X11SelectionConnection::property(std::uint32_t window, std::uint32_t property, bool remove,
                                      X11Property& whole) {
    constexpr auto everything = std::numeric_limits<std::uint32_t>::max() / 4;
    const auto reply = connection_.reply<xcb_get_property_reply>(xcb_get_property(
        connection_.get(), remove, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, everything));
    check();
    if (!reply || reply->type == XCB_NONE) return false;
    const auto data = bytesOf(reply);
    // The empty piece at the end of a transfer need not carry the type of the others.
    if (whole.type == 0 || !data.empty()) {
        whole.type = reply->type;
        whole.format = reply->format;
    }
    whole.data.insert(whole.data.end(), data.begin(), data.end());
    return true;
}

void X11SelectionConnection::deleteProperty(std::uint32_t window, std::uint32_t property) {
    xcb_delete_property(connection_.get(), window, property);
}

void X11SelectionConnection::setProperty(std::uint32_t window, std::uint32_t property,
                                         std::uint32_t type, int format,
                                         std::span<const std::uint8_t> data) {
    const auto units = data.size() / static_cast<std::size_t>(format / 8);
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window, property, type,
                        static_cast<std::uint8_t>(format), static_cast<std::uint32_t>(units),
                        data.data());
}

void X11SelectionConnection::watch(std::uint32_t window, bool on) {
    if (window == window_) return;
    const std::uint32_t events =
        on ? XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY : 0;
    xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, &events);
}

void X11SelectionConnection::answer(const X11SelectionEvent& request, std::uint32_t property) {
    // The server copies 32 bytes of an event, more than this structure has.
    union {
        xcb_selection_notify_event_t event;
        char bytes[32];
    } message{};
    message.event = {.response_type = XCB_SELECTION_NOTIFY,
                     .pad0 = 0,
                     .sequence = 0,
                     .time = request.time,
                     .requestor = request.window,
                     .selection = clipboard_,
                     .target = request.target,
                     .property = property};
    xcb_send_event(connection_.get(), 0, request.window, 0, message.bytes);
}

}  // namespace quorvi
