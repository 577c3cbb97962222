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
#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "Quorvi/platform/linux/x11/keyboard/X11FocusGrabs.h"
#include "Quorvi/platform/linux/x11/keyboard/X11Layout.h"
#include "Quorvi/platform/linux/x11/keyboard/X11PressedKeys.h"

namespace quorvi {

// One life of the input hook: the thread that owns both connections to the server, from connecting
// until the connection is lost or the object goes. One connection observes all devices (raw events
// reach it whoever holds a grab) and posts our own events; the other one grabs. The thread does
// nothing else, since a grabbed key freezes the user's keyboard until it has been dealt with.
//
// Raw events carry neither modifiers nor repeats: flags are computed from the keys held, and the
// repeats of swallowed keys come from the grabs.
class X11InputSession {
public:
    // Called on the input thread, one event after the other.
    using Sink = std::function<void(const TapEvent&)>;

    // Null when there is no server or it lacks an extension. `onLost` is called on the input
    // thread, once, when the connection breaks.
    // Keys that are to be swallowed are held back from the first moment on.
    static std::unique_ptr<X11InputSession> start(Sink sink, std::function<void()> onLost,
                                                  std::vector<SwallowedKey> swallowed);
    ~X11InputSession();

    // All of these are called on the main thread and return at once.
    bool isAlive() const { return alive_; }
    // `whenDone` is called on the input thread, in order with the events.
    void setEnabled(bool enabled, std::function<void()> whenDone);
    void setSwallowed(std::vector<SwallowedKey> keys);
    void post(std::vector<TapEvent> events, pid_t pid);
    const X11PressedKeys& pressedKeys() const { return pressed_; }

private:
    using Clock = std::chrono::steady_clock;

    // A press or release that we have posted and whose raw event is still to come. Every client's
    // synthetic events come from one and the same device; only the number of the request that made
    // the event tells ours apart.
    struct OwnEvent {
        std::uint32_t sequence;
        XKeycode keycode;
        bool down;
        std::int64_t marker;
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
