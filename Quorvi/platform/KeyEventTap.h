#pragma once

#include <cstdint>
#include <functional>
#include <optional>
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
    // The system has disabled the hook; it delivers nothing until it is enabled again.
    tapDisabledByTimeout = 0xFFFFFFFE,
    tapDisabledByUserInput = 0xFFFFFFFF,
};

// One event of the session's input devices. A plain value.
struct TapEvent {
    TapEventType type = TapEventType::keyDown;
    KeyCode keyCode = 0;      // of a keyboard event; auto-repeat is a further keyDown
    std::int64_t button = 0;  // of a mouse event: 0 left, 1 right, 2 middle, 3 and up others
    std::uint64_t flags = 0;  // modifierFlag bits after the event, sides included
    std::int64_t sourceUserData = 0;  // the marker of a synthesised event, else 0
    // Of a keyUp: the desktop can't tell how long the key was held, only that it does not repeat.
    bool isTap = false;
};

enum class TapVerdict { pass, swallow };

// A key press to keep from the frontmost application: the key with exactly these standard modifiers
// held (Caps Lock and Num Lock don't count), its auto-repeat and its release.
struct SwallowedKey {
    KeyCode keyCode = 0;
    std::uint64_t modifiers = 0;

    bool operator==(const SwallowedKey&) const = default;
};

// The global input hook: observes all key, mouse button and scroll events of the session, and keeps
// the declared key presses from other applications. Main thread; operations return at once and
// never throw. The handler is called on the main thread, in the order of the events.
class KeyEventTap {
public:
    virtual ~KeyEventTap() = default;

    // Installs the hook, enabled. Returns false if the desktop does not allow one.
    virtual bool install(std::function<TapVerdict(const TapEvent&)> handler) = 0;
    virtual void remove() = 0;

    // Returns whether a hook is installed and still connected.
    virtual bool isValid() const = 0;
    virtual bool isEnabled() const = 0;
    virtual void setEnabled(bool enabled) = 0;

    // Declares the presses to swallow from now on, or from install() on. The hook decides by this
    // list alone and never waits for the main thread, so a busy main thread does not block the
    // user's keyboard. The handler's later verdict has to be the same.
    virtual void setSwallowed(std::vector<SwallowedKey> keys) = 0;

    // Declares the modifier key whose press and release alone are to mean nothing to other
    // programs, from now on: many move the focus to their menu bar when a lone Alt is released, and
    // desktops open their menu for a lone Super. Chords with the key work as ever. None at first.
    virtual void setQuietModifier(std::optional<KeyCode> modifier) = 0;

    // Return the last known physical state of a key or mouse button. Synthesised paste events don't
    // count.
    virtual bool keyIsDown(KeyCode keyCode) const = 0;
    virtual bool buttonIsDown(std::int64_t button) const = 0;
};

}  // namespace quorvi
