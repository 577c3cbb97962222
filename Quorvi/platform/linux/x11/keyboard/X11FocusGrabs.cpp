#include "Quorvi/platform/linux/x11/keyboard/X11FocusGrabs.h"

#define explicit explicitComponents  // the XKB header names a field with a C++ keyword
#include <xcb/xkb.h>
#undef explicit

#include <algorithm>
#include <utility>

namespace quorvi {
namespace {

constexpr std::uint16_t modifierBits = 0xFF;  // of an event's state; the rest are mouse buttons

// Every combination of the bits in `mask`, none and all included.
template <class Visit>
void forEachSubset(std::uint16_t mask, Visit visit) {
    unsigned subset = 0;
    do {
        visit(static_cast<std::uint16_t>(subset));
        subset = (subset - mask) & mask;
    } while (subset != 0);
}

}  // namespace

X11FocusGrabs::X11FocusGrabs(const X11PressedKeys& pressed, std::function<void(XKeycode)> onRepeat,
                             std::function<void()> catchUp)
    : pressed_(pressed), onRepeat_(std::move(onRepeat)), catchUp_(std::move(catchUp)) {}

bool X11FocusGrabs::start() {
    auto* c = connection_.get();
    if (!connection_.isAlive()) return false;
    const auto version = xcb_xkb_use_extension(c, 1, 0);
    const auto supported = connection_.reply<xcb_xkb_use_extension_reply>(version);
    if (!supported || !supported->supported) return false;
    // Without this the server would send a release before every repeat.
    constexpr std::uint32_t detectable = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto flags =
        xcb_xkb_per_client_flags(c, XCB_XKB_ID_USE_CORE_KBD, detectable, detectable, 0, 0, 0);
    connection_.reply<xcb_xkb_per_client_flags_reply>(flags);
    activeWindowAtom_ = connection_.atom("_NET_ACTIVE_WINDOW");
    constexpr std::uint32_t rootEvents =
        XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_change_window_attributes(c, connection_.root(), XCB_CW_EVENT_MASK, &rootEvents);
    followFocus();
    return connection_.isAlive();
}

void X11FocusGrabs::setLayout(const X11Layout& layout) {
    ungrabAll();
    layout_ = layout;
    computeGrabs();
    grabAll();
}

void X11FocusGrabs::setSwallowed(std::vector<SwallowedKey> keys) {
    ungrabAll();
    // Presses whose release went to another window.
    for (std::size_t keycode = 0; keycode < swallowed_.size(); ++keycode)
        if (!pressed_.isDown(static_cast<XKeycode>(keycode))) swallowed_.reset(keycode);
    keys_ = std::move(keys);
    computeGrabs();
    grabAll();
}

void X11FocusGrabs::computeGrabs() {
    grabs_.clear();
    for (const auto& key : keys_)
        for (const auto keycode : layout_.keycodesFor(key.keyCode))
            for (const auto state : layout_.statesFor(key.modifiers))
                grabs_.push_back({keycode, state});
}

void X11FocusGrabs::grabAll() {
    if (window_ == XCB_NONE) return;
    // A key that another program has grabbed on this window gives an error, which is passed over:
    // the key can't be swallowed there, and the raw events report it all the same.
    for (const auto& grab : grabs_)
        forEachSubset(layout_.lockBits(), [&](std::uint16_t locks) {
            xcb_grab_key(connection_.get(), 0, window_,
                         static_cast<std::uint16_t>(grab.state | locks), grab.keycode,
                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC);
        });
}

void X11FocusGrabs::ungrabAll() {
    if (window_ == XCB_NONE) return;
    for (const auto& grab : grabs_)
        forEachSubset(layout_.lockBits(), [&](std::uint16_t locks) {
            xcb_ungrab_key(connection_.get(), grab.keycode, window_,
                           static_cast<std::uint16_t>(grab.state | locks));
        });
}

void X11FocusGrabs::suspend() {
    ungrabAll();
    suspended_ = true;
    window_ = XCB_NONE;
    xcb_ungrab_keyboard(connection_.get(), XCB_CURRENT_TIME);
    activeKey_ = 0;
    connection_.synchronise();
}

void X11FocusGrabs::resume() {
    suspended_ = false;
    followFocus();
}

void X11FocusGrabs::followFocus() {
    // The focus may move on before the events of the new window have been asked for, so it is
    // looked up until it stands still.
    while (!suspended_ && moveToFocus()) continue;
}

bool X11FocusGrabs::moveToFocus() {
    auto* c = connection_.get();
    const auto cookie = xcb_get_input_focus(c);
    const auto reply = connection_.reply<xcb_get_input_focus_reply>(cookie);
    if (!reply) return false;
    auto focus = reply->focus;
    if (focus == XCB_INPUT_FOCUS_NONE || focus == XCB_INPUT_FOCUS_POINTER_ROOT)
        focus = connection_.root();
    if (focus == window_) return false;
    constexpr std::uint32_t none = XCB_EVENT_MASK_NO_EVENT;
    constexpr std::uint32_t changes = XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    if (window_ != XCB_NONE && window_ != connection_.root())
        xcb_change_window_attributes(c, window_, XCB_CW_EVENT_MASK, &none);
    ungrabAll();
    window_ = focus;
    if (window_ != connection_.root())
        xcb_change_window_attributes(c, window_, XCB_CW_EVENT_MASK, &changes);
    grabAll();
    return true;
}

bool X11FocusGrabs::processEvents() {
    return process(connection_.nextEvent());
}

bool X11FocusGrabs::processQueuedEvents() {
    return process(connection_.nextQueuedEvent());
}

bool X11FocusGrabs::process(XcbPointer<xcb_generic_event_t> event) {
    if (!event) return false;
    bool focusMayHaveMoved = false;
    for (; event; event = connection_.nextQueuedEvent())
        focusMayHaveMoved = handle(*event) || focusMayHaveMoved;
    if (focusMayHaveMoved) followFocus();
    return true;
}

bool X11FocusGrabs::handle(const xcb_generic_event_t& event) {
    switch (xcbEventType(event)) {
        case XCB_KEY_PRESS:
            keyPress(reinterpret_cast<const xcb_key_press_event_t&>(event));
            return false;
        case XCB_KEY_RELEASE:
            keyRelease(reinterpret_cast<const xcb_key_release_event_t&>(event));
            return false;
        case XCB_PROPERTY_NOTIFY:
            return reinterpret_cast<const xcb_property_notify_event_t&>(event).atom ==
                   activeWindowAtom_;
        case XCB_FOCUS_IN:
        case XCB_FOCUS_OUT:
        case XCB_UNMAP_NOTIFY:
        case XCB_DESTROY_NOTIFY:
            return true;
        default:
            return false;
    }
}

bool X11FocusGrabs::isGrabbed(XKeycode keycode, std::uint16_t state) const {
    const auto plain = static_cast<std::uint16_t>(state & modifierBits & ~layout_.lockBits());
    return std::find(grabs_.begin(), grabs_.end(), Grab{keycode, plain}) != grabs_.end();
}

// All reports of one press carry the same time, and each repeat a later one. The raw events may
// have run ahead to the next press by now; they may also be behind, which only catchUp_ can tell.
bool X11FocusGrabs::isRepeat(const xcb_key_press_event_t& event) const {
    return pressed_.isDown(event.detail) &&
           isLaterTime(event.time, pressed_.pressTime(event.detail));
}

void X11FocusGrabs::keyPress(const xcb_key_press_event_t& event) {
    const auto keycode = event.detail;
    bool repeats = isRepeat(event);
    if (repeats) {
        catchUp_();
        repeats = isRepeat(event);
    }
    // The application has seen this key go down before it was declared, or with other modifiers.
    // The rest of that press is its own, too.
    if (repeats && !swallowed_.test(keycode)) return giveBack(event.time);
    if (!repeats && activeKey_ != 0) {
        if (changesFlags(layout_.keyCodeOf(keycode)))
            return allow(XCB_ALLOW_SYNC_KEYBOARD, event.time);
        if (!isGrabbed(keycode, event.state)) return giveBack(event.time);
    }
    if (activeKey_ == 0) activeKey_ = keycode;
    swallowed_.set(keycode);
    allow(XCB_ALLOW_SYNC_KEYBOARD, event.time);
    if (repeats) onRepeat_(keycode);
}

void X11FocusGrabs::keyRelease(const xcb_key_release_event_t& event) {
    const auto keycode = event.detail;
    if (keycode == activeKey_) {
        swallowed_.reset(keycode);
        activeKey_ = 0;
        // Usually ends the grab by itself. The next one may begin within the same millisecond, and
        // must not be unfrozen by this answer.
        allow(XCB_ALLOW_ASYNC_KEYBOARD, event.time - 1);
    } else if (swallowed_.test(keycode) || changesFlags(layout_.keyCodeOf(keycode))) {
        swallowed_.reset(keycode);
        allow(XCB_ALLOW_SYNC_KEYBOARD, event.time);
    } else {
        giveBack(event.time);
    }
}

void X11FocusGrabs::giveBack(xcb_timestamp_t time) {
    activeKey_ = 0;
    allow(XCB_ALLOW_REPLAY_KEYBOARD, time);
}

void X11FocusGrabs::allow(std::uint8_t mode, xcb_timestamp_t time) {
    xcb_allow_events(connection_.get(), mode, time);
    xcb_flush(connection_.get());
}

}  // namespace quorvi
