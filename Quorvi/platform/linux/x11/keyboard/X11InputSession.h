#pragma once

#include <sys/types.h>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "Quorvi/platform/KeyEventTap.h"
#include "Quorvi/platform/linux/keyboard/PasteChords.h"
#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "Quorvi/platform/linux/x11/keyboard/X11FocusGrabs.h"
#include "Quorvi/platform/linux/x11/keyboard/X11Layout.h"
#include "Quorvi/platform/linux/x11/keyboard/X11PressedKeys.h"

namespace quorvi {

// The input hook during one connection to the server: the thread that owns both of its connections.
// One observes all devices (raw events reach it whoever holds a grab) and posts our own events; the
// other grabs. The thread does nothing else, since a grabbed key freezes the user's keyboard until
// it is handled.
//
// Raw events have neither modifiers nor repeats: flags are computed from the held keys, repeats of
// swallowed keys come from the grabs.
class X11InputSession {
public:
    // Called on the input thread, one event after the other.
    using Sink = std::function<void(const TapEvent&)>;

    // Returns null if there is no server or it lacks an extension. `onLost` is called once, on the
    // input thread, when the connection is lost. `swallowed` holds from the first moment.
    static std::unique_ptr<X11InputSession> start(Sink sink, std::function<void()> onLost,
                                                  std::vector<SwallowedKey> swallowed);
    ~X11InputSession();

    // For the main thread; return at once.
    bool isAlive() const { return alive_; }
    // `whenDone` is called on the input thread, in order with the events.
    void setEnabled(bool enabled, std::function<void()> whenDone);
    void setSwallowed(std::vector<SwallowedKey> keys);
    void setQuietModifier(std::optional<KeyCode> modifier);
    void setPasteChords(PasteChords chords);
    // `whenKnown` is called on the input thread, or not at all if that ends before.
    void choosePaste(pid_t pid, std::function<void(const PasteChords::Choice&)> whenKnown);
    void post(std::vector<TapEvent> events, pid_t pid);
    const X11PressedKeys& pressedKeys() const { return pressed_; }

private:
    using Clock = std::chrono::steady_clock;

    // A posted press or release whose raw event has not arrived yet. All clients' synthetic events
    // come from one device; only the sequence number of the request tells ours apart.
    struct OwnEvent {
        std::uint32_t sequence;
        XKeycode keycode;
        bool down;
        std::optional<std::int64_t> marker;  // none: it is not reported
    };

    X11InputSession(Sink sink, std::function<void()> onLost);

    bool connect();
    bool selectEvents();
    void run();
    void enqueue(std::function<void()> command);
    void runCommands();
    void runDueWork();
    int millisecondsToDueWork() const;

    void processRawEvents();
    bool processQueuedRawEvents();  // false when there was nothing
    void handleRawEvent(const xcb_generic_event_t& event);
    void handleGeneric(const xcb_ge_generic_event_t& event);
    void handleKey(XKeycode keycode, bool down, std::uint32_t time, std::uint32_t sequence);
    void tapSilentKey();
    void foreseeCapsLock(bool down);
    void handleButton(std::uint32_t number, bool down, std::uint32_t sequence);
    void handleXkb(const xcb_generic_event_t& event);
    void handleRepeat(XKeycode keycode);
    std::optional<OwnEvent> takeOwnEvent(XKeycode keycode, bool down, std::uint32_t sequence);
    void report(TapEvent event);
    std::uint64_t flags() const;

    void reseed();
    void reloadLayout();
    void readLocks();
    void fakeKey(XKeycode keycode, bool down, std::optional<std::int64_t> marker);
    void postNow(const std::vector<TapEvent>& events, pid_t pid);

    Sink sink_;
    std::function<void()> onLost_;
    X11Connection raw_;
    X11PressedKeys pressed_;
    X11FocusGrabs grabs_;
    X11Layout layout_;
    std::uint8_t inputOpcode_ = 0;
    std::uint8_t xkbEvent_ = 0;
    bool enabled_ = true;
    bool capsLocked_ = false;
    bool wasCapsLocked_ = false;  // before Caps Lock was pressed
    std::uint64_t ownFlags_ = 0;  // of the keys that our own events hold
    std::optional<KeyCode> quietModifier_;
    PasteChords pasteChords_;
    std::vector<OwnEvent> ownEvents_;
    std::optional<Clock::time_point> nextReseed_;
    std::optional<Clock::time_point> layoutDue_;

    std::atomic<bool> alive_{false};
    std::atomic<bool> ending_{false};
    int wakeDescriptor_ = -1;
    std::mutex mutex_;  // guards commands_ only
    std::vector<std::function<void()>> commands_;
    std::thread thread_;
};

}  // namespace quorvi
