#include "Quorvi/platform/linux/x11/keyboard/X11InputSession.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

#define explicit explicitComponents  // the XKB header names a field with a C++ keyword
#include <xcb/xkb.h>
#undef explicit

#include <algorithm>
#include <utility>

#include "Quorvi/platform/linux/x11/keyboard/X11PasteChord.h"

namespace quorvi {
namespace {

// How often the keys held are compared with the server's own view, while any is held.
constexpr auto reseedPeriod = std::chrono::milliseconds(500);

// One change of layout is announced several times in a row.
constexpr auto layoutSettleTime = std::chrono::milliseconds(50);

}  // namespace

std::unique_ptr<X11InputSession> X11InputSession::start(Sink sink, std::function<void()> onLost,
                                                        std::vector<SwallowedKey> swallowed) {
    std::unique_ptr<X11InputSession> session(
        new X11InputSession(std::move(sink), std::move(onLost)));
    if (!session->connect()) return nullptr;
    session->grabs_.setSwallowed(std::move(swallowed));
    session->grabs_.connection().synchronise();
    session->alive_ = true;
    session->thread_ = std::thread([s = session.get()] { s->run(); });
    pthread_setname_np(session->thread_.native_handle(), "quorvi-input");
    return session;
}

X11InputSession::X11InputSession(Sink sink, std::function<void()> onLost)
    : sink_(std::move(sink)),
      onLost_(std::move(onLost)),
      grabs_(
          pressed_, [this](XKeycode keycode) { handleRepeat(keycode); },
          [this] {
              raw_.synchronise();
              processRawEvents();
          }),
      wakeDescriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

X11InputSession::~X11InputSession() {
    if (thread_.joinable()) {
        ending_ = true;
        enqueue([] {});
        thread_.join();
    }
    close(wakeDescriptor_);
}

bool X11InputSession::connect() {
    if (wakeDescriptor_ < 0 || !raw_.isAlive() || !selectEvents()) return false;
    reloadLayout();
    readLocks();
    reseed();
    return grabs_.start() && raw_.isAlive();
}

bool X11InputSession::selectEvents() {
    auto* c = raw_.get();
    for (auto* extension : {&xcb_input_id, &xcb_test_id, &xcb_xkb_id}) {
        const auto* data = xcb_get_extension_data(c, extension);
        if (data == nullptr || !data->present) return false;
        if (extension == &xcb_input_id) inputOpcode_ = data->major_opcode;
        if (extension == &xcb_xkb_id) xkbEvent_ = data->first_event;
    }
    // From version 2.2 on, raw events are delivered while another client holds a grab.
    const auto versionCookie = xcb_input_xi_query_version(c, 2, 2);
    const auto version = raw_.reply<xcb_input_xi_query_version_reply>(versionCookie);
    if (!version || std::pair(version->major_version, version->minor_version) <
                        std::pair<std::uint16_t, std::uint16_t>(2, 2))
        return false;
    struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        std::uint32_t events =
            XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE |
            XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
    } mask;
    xcb_input_xi_select_events(c, raw_.root(), 1, &mask.head);

    const auto xkbCookie = xcb_xkb_use_extension(c, 1, 0);
    const auto xkb = raw_.reply<xcb_xkb_use_extension_reply>(xkbCookie);
    if (!xkb || !xkb->supported) return false;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = details.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
    details.affectState = details.stateDetails = XCB_XKB_STATE_PART_MODIFIER_LOCK;
    constexpr std::uint16_t mapParts =
        XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_KEY_TYPES;
    xcb_xkb_select_events_aux(c, XCB_XKB_ID_USE_CORE_KBD,
                              XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY |
                                  XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_STATE_NOTIFY,
                              0, 0, mapParts, mapParts, &details);
    return true;
}

void X11InputSession::run() {
    pollfd descriptors[] = {{raw_.fileDescriptor(), POLLIN, 0},
                            {grabs_.connection().fileDescriptor(), POLLIN, 0},
                            {wakeDescriptor_, POLLIN, POLLIN}};
    while (!ending_) {
        if (descriptors[2].revents != 0) runCommands();
        runDueWork();
        // Raw events first: a repeat counts only while its key is known to be down. Flushing may
        // read events into the queues, where no descriptor announces them.
        do {
            do processRawEvents();
            while (grabs_.processEvents());
            xcb_flush(raw_.get());
            xcb_flush(grabs_.connection().get());
        } while (processQueuedRawEvents() || grabs_.processQueuedEvents());
        if (!raw_.isAlive() || !grabs_.connection().isAlive()) {
            alive_ = false;
            onLost_();
            return;
        }
        poll(descriptors, 3, millisecondsToDueWork());
    }
}

void X11InputSession::enqueue(std::function<void()> command) {
    {
        std::lock_guard lock(mutex_);
        commands_.push_back(std::move(command));
    }
    eventfd_write(wakeDescriptor_, 1);
}

void X11InputSession::runCommands() {
    eventfd_t count = 0;
    if (eventfd_read(wakeDescriptor_, &count) != 0) return;
    std::vector<std::function<void()>> commands;
    {
        std::lock_guard lock(mutex_);
        commands.swap(commands_);
    }
    for (const auto& command : commands) command();
}

void X11InputSession::runDueWork() {
    if (layoutDue_ && Clock::now() >= *layoutDue_) reloadLayout();
    if (!pressed_.anythingIsDown()) {
        nextReseed_.reset();
    } else if (!nextReseed_) {
        nextReseed_ = Clock::now() + reseedPeriod;
    } else if (Clock::now() >= *nextReseed_) {
        reseed();
        nextReseed_ = Clock::now() + reseedPeriod;
    }
}

int X11InputSession::millisecondsToDueWork() const {
    if (!layoutDue_ && !nextReseed_ && !pressed_.anythingIsDown()) return -1;
    auto due = Clock::now() + reseedPeriod;
    if (nextReseed_) due = std::min(due, *nextReseed_);
    if (layoutDue_) due = std::min(due, *layoutDue_);
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(due - Clock::now());
    return std::max(0, static_cast<int>(left.count()));
}

void X11InputSession::processRawEvents() {
    // One read from the socket, then what it has brought: what comes later wakes the thread again.
    if (const auto event = raw_.nextEvent()) {
        handleRawEvent(*event);
        processQueuedRawEvents();
    }
}

bool X11InputSession::processQueuedRawEvents() {
    bool any = false;
    while (const auto event = raw_.nextQueuedEvent()) {
        any = true;
        handleRawEvent(*event);
    }
    return any;
}

void X11InputSession::handleRawEvent(const xcb_generic_event_t& event) {
    const auto type = xcbEventType(event);
    if (type == XCB_GE_GENERIC)
        handleGeneric(reinterpret_cast<const xcb_ge_generic_event_t&>(event));
    else if (type == xkbEvent_)
        handleXkb(event);
}

void X11InputSession::handleGeneric(const xcb_ge_generic_event_t& event) {
    if (event.extension != inputOpcode_) return;
    // Key and button events have one and the same form.
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    switch (event.event_type) {
        case XCB_INPUT_RAW_KEY_PRESS:
        case XCB_INPUT_RAW_KEY_RELEASE:
            handleKey(static_cast<XKeycode>(raw.detail),
                      event.event_type == XCB_INPUT_RAW_KEY_PRESS, raw.time, raw.full_sequence);
            break;
        case XCB_INPUT_RAW_BUTTON_PRESS:
        case XCB_INPUT_RAW_BUTTON_RELEASE:
            handleButton(raw.detail, event.event_type == XCB_INPUT_RAW_BUTTON_PRESS,
                         raw.full_sequence);
            break;
        default:
            break;
    }
}

void X11InputSession::handleKey(XKeycode keycode, bool down, std::uint32_t time,
                                std::uint32_t sequence) {
    const auto code = layout_.keyCodeOf(keycode);
    TapEvent event{.keyCode = code};
    if (changesFlags(code))
        event.type = TapEventType::flagsChanged;
    else
        event.type = down ? TapEventType::keyDown : TapEventType::keyUp;
    if (const auto own = takeOwnEvent(keycode, down, sequence)) {
        if (!own->marker) return;
        event.sourceUserData = *own->marker;
        ownFlags_ = down ? ownFlags_ | flagsOfKey(code) : ownFlags_ & ~flagsOfKey(code);
    } else {
        pressed_.change(keycode, down, time, sequence);
        if (layout_.isCapsLock(keycode)) foreseeCapsLock(down);
        if (down && code == quietModifier_ && layout_.opensMenus(keycode) &&
            pressed_.isOnlyKeyDown(keycode))
            tapSilentKey();
    }
    event.flags = flags();
    report(event);
}

// The release of a modifier is a lone one only if no other key was pressed in between. This happens
// at its press, and here, since the main thread may be slower than a short tap.
void X11InputSession::tapSilentKey() {
    const auto key = layout_.silentKey();
    if (!key) return;
    fakeKey(*key, true, std::nullopt);
    fakeKey(*key, false, std::nullopt);
    xcb_flush(raw_.get());
}

// The change of the lock state is announced after the key event that makes it, and asking the
// server would tell its state of now. So what the key does is done here first: pressing it locks,
// and releasing it unlocks if it was locked before.
void X11InputSession::foreseeCapsLock(bool down) {
    if (down)
        wasCapsLocked_ = std::exchange(capsLocked_, true);
    else
        capsLocked_ = !wasCapsLocked_;
}

void X11InputSession::handleButton(std::uint32_t number, bool down, std::uint32_t sequence) {
    TapEvent event{.flags = flags()};
    if (number >= 4 && number <= 7) {
        if (!down) return;
        event.type = TapEventType::scrollWheel;
        return report(event);
    }
    // X counts left, middle, right, then four scroll directions, then the other buttons.
    switch (number) {
        case 1:
            event.button = 0;
            event.type = down ? TapEventType::leftMouseDown : TapEventType::leftMouseUp;
            break;
        case 3:
            event.button = 1;
            event.type = down ? TapEventType::rightMouseDown : TapEventType::rightMouseUp;
            break;
        default:
            event.button = number == 2 ? 2 : static_cast<std::int64_t>(number) - 5;
            event.type = down ? TapEventType::otherMouseDown : TapEventType::otherMouseUp;
    }
    pressed_.changeButton(event.button, down, sequence);
    report(event);
}

void X11InputSession::handleRepeat(XKeycode keycode) {
    report(
        {.type = TapEventType::keyDown, .keyCode = layout_.keyCodeOf(keycode), .flags = flags()});
}

void X11InputSession::handleXkb(const xcb_generic_event_t& event) {
    const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
    if (state.xkbType == XCB_XKB_STATE_NOTIFY)
        capsLocked_ = (state.lockedMods & XCB_MOD_MASK_LOCK) != 0;
    else if (!layoutDue_)
        layoutDue_ = Clock::now() + layoutSettleTime;
}

std::optional<X11InputSession::OwnEvent> X11InputSession::takeOwnEvent(XKeycode keycode, bool down,
                                                                       std::uint32_t sequence) {
    const auto found = std::find_if(ownEvents_.begin(), ownEvents_.end(), [&](const auto& own) {
        return own.sequence == sequence && own.keycode == keycode && own.down == down;
    });
    if (found == ownEvents_.end()) return std::nullopt;
    const auto own = *found;
    ownEvents_.erase(found);
    return own;
}

void X11InputSession::report(TapEvent event) {
    if (enabled_) sink_(event);
}

std::uint64_t X11InputSession::flags() const {
    return pressed_.flags() | ownFlags_ | (capsLocked_ ? capsLockFlag : 0);
}

void X11InputSession::reseed() {
    auto* c = raw_.get();
    const auto keysCookie = xcb_query_keymap(c);
    const auto pointerCookie = xcb_query_pointer(c, raw_.root());
    const auto keys = raw_.reply<xcb_query_keymap_reply>(keysCookie);
    const auto pointer = raw_.reply<xcb_query_pointer_reply>(pointerCookie);
    if (!keys || !pointer) return;
    processRawEvents();
    constexpr std::uint16_t buttons = 0x1F00;
    pressed_.reconcile(keys->keys, (pointer->mask & buttons) != 0, keysCookie.sequence);
}

void X11InputSession::reloadLayout() {
    layoutDue_.reset();
    auto layout = X11Layout::fetch(raw_);
    if (!layout) return;
    layout_ = std::move(*layout);
    for (int keycode = 0; keycode < 256; ++keycode)
        pressed_.setCode(static_cast<XKeycode>(keycode),
                         layout_.keyCodeOf(static_cast<XKeycode>(keycode)));
    grabs_.setLayout(layout_);
}

void X11InputSession::readLocks() {
    const auto cookie = xcb_xkb_get_state(raw_.get(), XCB_XKB_ID_USE_CORE_KBD);
    if (const auto state = raw_.reply<xcb_xkb_get_state_reply>(cookie))
        capsLocked_ = (state->lockedMods & XCB_MOD_MASK_LOCK) != 0;
}

void X11InputSession::setEnabled(bool enabled, std::function<void()> whenDone) {
    enqueue([this, enabled, whenDone = std::move(whenDone)] {
        whenDone();
        if (enabled == enabled_) return;
        enabled_ = enabled;
        if (enabled) {
            reseed();
            grabs_.resume();
        } else {
            grabs_.suspend();
        }
    });
}

void X11InputSession::setSwallowed(std::vector<SwallowedKey> keys) {
    enqueue([this, keys = std::move(keys)] { grabs_.setSwallowed(keys); });
}

void X11InputSession::setQuietModifier(std::optional<KeyCode> modifier) {
    enqueue([this, modifier] { quietModifier_ = modifier; });
}

void X11InputSession::setPasteChords(PasteChords chords) {
    enqueue([this, chords = std::move(chords)] { pasteChords_ = chords; });
}

void X11InputSession::choosePaste(pid_t pid,
                                  std::function<void(const PasteChords::Choice&)> whenKnown) {
    enqueue([this, pid, whenKnown = std::move(whenKnown)] {
        whenKnown(X11PasteChord::choiceForActiveApplication(raw_, pid, pasteChords_));
    });
}

void X11InputSession::post(std::vector<TapEvent> events, pid_t pid) {
    enqueue([this, events = std::move(events), pid] { postNow(events, pid); });
}

void X11InputSession::fakeKey(XKeycode keycode, bool down, std::optional<std::int64_t> marker) {
    const auto type = down ? XCB_KEY_PRESS : XCB_KEY_RELEASE;
    const auto cookie = xcb_test_fake_input(raw_.get(), static_cast<std::uint8_t>(type), keycode,
                                            XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    ownEvents_.push_back({cookie.sequence, keycode, down, marker});
}

void X11InputSession::postNow(const std::vector<TapEvent>& events, pid_t pid) {
    // The layout may have changed a moment ago.
    raw_.synchronise();
    processRawEvents();
    if (layoutDue_) reloadLayout();
    const auto chord = X11PasteChord::forActiveApplication(raw_, layout_, pid, pasteChords_);
    // With a grab of ours active, our own events would come back to us instead of going to the
    // application.
    grabs_.suspend();
    auto* c = raw_.get();
    xcb_grab_server(c);
    for (const auto& event : events) {
        const bool isCommand =
            event.type == TapEventType::flagsChanged &&
            (event.keyCode == keyCode::leftCommand || event.keyCode == keyCode::rightCommand);
        if (isCommand && (event.flags & modifierFlag::command) != 0) {
            for (const auto modifier : chord.modifiers)
                fakeKey(modifier, true, event.sourceUserData);
        } else if (isCommand) {
            for (auto m = chord.modifiers.rbegin(); m != chord.modifiers.rend(); ++m)
                fakeKey(*m, false, event.sourceUserData);
        } else if (event.type == TapEventType::keyDown || event.type == TapEventType::keyUp) {
            const auto key =
                event.keyCode == keyCode::v ? chord.key : layout_.keycodeFor(event.keyCode);
            if (key != 0) fakeKey(key, event.type == TapEventType::keyDown, event.sourceUserData);
        }
    }
    xcb_ungrab_server(c);
    raw_.synchronise();
    // The grabs are in force again before our events are reported.
    if (enabled_) grabs_.resume();
    processRawEvents();
    // A key that was down already makes no event. Nothing that comes later can be ours.
    ownEvents_.clear();
    ownFlags_ = 0;
}

}  // namespace quorvi
