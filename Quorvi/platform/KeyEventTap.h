#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "QuorviCore/shortcut/Hotkey.h"

namespace quorvi {

enum class TapEventType : std::uint32_t {
    leftMouseDown = 1,
    leftMouseUp = 2,
    rightMouseDown = 3,
    rightMouseUp = 4,
    keyDown = 10,
    keyUp = 11,
    flagsChanged = 12,
    scrollWheel = 22,
    otherMouseDown = 25,
    otherMouseUp = 26,
    // The hook was switched off by the system; it delivers nothing until it is enabled again.
    tapDisabledByTimeout = 0xFFFFFFFE,
    tapDisabledByUserInput = 0xFFFFFFFF,
};

// One event of the login session's input devices.
struct TapEvent {
    TapEventType type = TapEventType::keyDown;
    KeyCode keyCode = 0;      // of a keyboard event; auto-repeat is a further keyDown
    std::int64_t button = 0;  // of a mouse event: 0 left, 1 right, 2 middle, 3 and up others
    std::uint64_t flags = 0;  // modifierFlag bits after the event, sides included
    std::int64_t sourceUserData = 0;  // the marker of a synthesised event, else 0
};

enum class TapVerdict { pass, swallow };

// A key press that is to be kept from the frontmost application: the key with exactly these
// standard modifiers held (Caps Lock and Num Lock don't count), its auto-repeat and its release.
struct SwallowedKey {
    KeyCode keyCode = 0;
    std::uint64_t modifiers = 0;

    bool operator==(const SwallowedKey&) const = default;
};

// The global input hook. It observes every key, mouse button and scroll event of the session and
// keeps the declared key presses from other applications. All operations are called on the main
// thread and return at once; the handler is called on the main thread, in the order of the events.
class KeyEventTap {
public:
    virtual ~KeyEventTap() = default;

    // Installs the hook; it starts out enabled. False when this desktop does not allow one.
    virtual bool install(std::function<TapVerdict(const TapEvent&)> handler) = 0;
    virtual void remove() = 0;

    // Whether a hook is installed whose connection still lives.
    virtual bool isValid() const = 0;
    virtual bool isEnabled() const = 0;
    virtual void setEnabled(bool enabled) = 0;

    // The presses to swallow from now on. The hook decides with this list by itself, without
    // waiting for the main thread, so a busy main thread never holds up the user's keyboard; the
    // handler's verdict says the same afterwards. What was set before install() holds from its
    // first moment on.
    virtual void setSwallowed(std::vector<SwallowedKey> keys) = 0;

    // The physical state of a key or mouse button as last known; never blocks. Synthesised paste
    // events don't count.
    virtual bool keyIsDown(KeyCode keyCode) const = 0;
    virtual bool buttonIsDown(std::int64_t button) const = 0;
};

}  // namespace quorvi
