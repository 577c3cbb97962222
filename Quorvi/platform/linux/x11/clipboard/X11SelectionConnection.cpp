#include "Quorvi/platform/linux/x11/clipboard/X11SelectionConnection.h"

#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <limits>

#include "Quorvi/platform/linux/x11/X11ConnectLock.h"

namespace quorvi {

namespace {

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using Reply = std::unique_ptr<T, FreeMemory>;

// Milliseconds for poll(), rounded up so that a wait never ends early and spins.
int pollTimeout(TimePoint limit) {
    using namespace std::chrono;
    const auto left = ceil<milliseconds>(limit - steady_clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, 3'600'000));
}

xcb_connection_t* connect(const std::string& display) {
    const auto lock = lockX11Connecting();
    return xcb_connect(display.empty() ? nullptr : display.c_str(), nullptr);
}

}  // namespace

void X11SelectionConnection::Free::operator()(xcb_connection_t* connection) const {
    xcb_disconnect(connection);
}

X11SelectionConnection::X11SelectionConnection(const std::string& display, int wakeFd)
    : connection_(connect(display)), wakeFd_(wakeFd) {
    check();
    auto* c = connection_.get();
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    window_ = xcb_generate_id(c);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window_, screen->root, -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    const auto known = atoms({"CLIPBOARD", "QUORVI_TIME"});
    clipboard_ = known[0];
    timeProbe_ = known[1];

    const auto* extension = xcb_get_extension_data(c, &xcb_xfixes_id);
    if (!extension || !extension->present) throw X11ConnectionLost{};
    firstXFixesEvent_ = extension->first_event;
    // The server ignores the extension's requests of a client that has not asked for its version.
    Reply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        c, xcb_xfixes_query_version(c, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr));
    xcb_xfixes_select_selection_input(c, window_, clipboard_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    flush();
}

X11SelectionConnection::~X11SelectionConnection() = default;

void X11SelectionConnection::check() const {
    if (xcb_connection_has_error(connection_.get())) throw X11ConnectionLost{};
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
        Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(c, cookie, nullptr));
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
        Reply<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(c, cookie, nullptr));
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
    pollfd ready[] = {{xcb_get_file_descriptor(connection_.get()), POLLIN, 0},
                      {wakeFd_, POLLIN, 0}};
    if (poll(ready, 2, pollTimeout(limit)) <= 0) return;
    if (ready[1].revents) {
        std::uint64_t wakes = 0;
        [[maybe_unused]] const auto got = read(wakeFd_, &wakes, sizeof wakes);
    }
    dispatchQueued();
    check();
}

void X11SelectionConnection::sync() {
    auto* c = connection_.get();
    Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
    check();
    dispatchQueued();
}

bool X11SelectionConnection::dispatchQueued() {
    bool any = false;
    while (Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        any = true;
        dispatch(event.get());
    }
    if (any) flush();
    return any;
}

// Errors arrive here as events of type 0 and are dropped: they tell of requestors that have
// vanished, whose transfers end by their window's destruction or by their deadline.
void X11SelectionConnection::dispatch(const void* event) {
    using Kind = X11SelectionEvent::Kind;
    const int type = static_cast<const xcb_generic_event_t*>(event)->response_type & 0x7F;
    if (type == XCB_SELECTION_REQUEST) {
        const auto& e = *static_cast<const xcb_selection_request_event_t*>(event);
        // Requestors of an old convention leave the property to the owner.
        const auto property = e.property == XCB_NONE ? e.target : e.property;
        X11SelectionEvent request{Kind::request, e.requestor, e.target, property, e.time};
        if (e.selection == clipboard_ && handler_)
            handler_(request);
        else
            answer(request, XCB_NONE);
    } else if (type == XCB_SELECTION_NOTIFY) {
        const auto& e = *static_cast<const xcb_selection_notify_event_t*>(event);
        if (handler_) handler_({Kind::reply, e.requestor, e.target, e.property, e.time});
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& e = *static_cast<const xcb_property_notify_event_t*>(event);
        if (e.window == window_ && e.atom == timeProbe_) {
            probedTime_ = e.time;
            return;
        }
        const auto kind =
            e.state == XCB_PROPERTY_DELETE ? Kind::propertyDeleted : Kind::propertySet;
        if (handler_) handler_({kind, e.window, 0, e.atom, e.time});
    } else if (type == XCB_DESTROY_NOTIFY) {
        const auto& e = *static_cast<const xcb_destroy_notify_event_t*>(event);
        if (handler_) handler_({Kind::windowDestroyed, e.window, 0, 0, 0});
    } else if (type == firstXFixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY) {
        const auto& e = *static_cast<const xcb_xfixes_selection_notify_event_t*>(event);
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
    auto* c = connection_.get();
    Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, clipboard_), nullptr));
    if (!reply) throw X11ConnectionLost{};
    dispatchQueued();
    return reply->owner;
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
    auto* c = connection_.get();
    constexpr auto everything = std::numeric_limits<std::uint32_t>::max() / 4;
    Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        c, xcb_get_property(c, remove, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, everything),
        nullptr));
    check();
    if (!reply || reply->type == XCB_NONE) return false;
    const auto* data = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
    const auto size = xcb_get_property_value_length(reply.get());
    // The empty piece at the end of a transfer need not carry the type of the others.
    if (whole.type == 0 || size > 0) {
        whole.type = reply->type;
        whole.format = reply->format;
    }
    whole.data.insert(whole.data.end(), data, data + size);
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
