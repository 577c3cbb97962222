#pragma once

#include <bitset>
#include <functional>
#include <vector>

#include "Quorvi/platform/KeyEventTap.h"
#include "Quorvi/platform/linux/x11/keyboard/X11Layout.h"
#include "Quorvi/platform/linux/x11/keyboard/X11PressedKeys.h"

namespace quorvi {

// Swallows declared key presses by grabbing them on the focus window, and follows the focus. A grab
// on the root window would make toolkits believe that they lost the focus while the key is held.
// Uses a connection of its own: the server hides raw events from a client whose grab is active.
//
// A grabbed press freezes the keyboard until this class allows events again, which it does within
// the same turn. Modifiers stay grabbed while a grabbed key is down: replaying one would end the
// grab, and the key's repeats, now without modifiers, would be typed into the application. Any
// other key is replayed, which ends the grab, too; if the swallowed key is released just then, the
// application ignores a release without a press.
//
// Input thread only.
class X11FocusGrabs {
public:
    // `onRepeat` is called for each auto-repeat of a swallowed key, `catchUp` to process all raw
    // events that the server has sent.
    X11FocusGrabs(const X11PressedKeys& pressed, std::function<void(XKeycode)> onRepeat,
                  std::function<void()> catchUp);

    X11Connection& connection() { return connection_; }

    // Returns false if the server does not support this.
    bool start();

    void setLayout(const X11Layout& layout);
    void setSwallowed(std::vector<SwallowedKey> keys);

    // Releases all grabs until resume(). The server has done so on return.
    void suspend();
    void resume();

    // Processes the events that have arrived; returns false if there were none. The second one
    // reads nothing from the server.
    bool processEvents();
    bool processQueuedEvents();

private:
    struct Grab {
        XKeycode keycode;
        std::uint16_t state;  // without the locks

        bool operator==(const Grab&) const = default;
    };

    void computeGrabs();
    void grabAll();
    void ungrabAll();
    void followFocus();
    bool moveToFocus();
    bool process(XcbPointer<xcb_generic_event_t> event);
    bool handle(const xcb_generic_event_t& event);  // whether the focus may have moved
    void keyPress(const xcb_key_press_event_t& event);
    void keyRelease(const xcb_key_release_event_t& event);
    bool isGrabbed(XKeycode keycode, std::uint16_t state) const;
    bool isRepeat(const xcb_key_press_event_t& event) const;
    // `time` is that of the event that is answered. The grab may be over and the next one active by
    // now: the server ignores an answer from before its beginning, which would unfreeze it too
    // early and lose the keys that follow.
    void allow(std::uint8_t mode, xcb_timestamp_t time);
    void giveBack(xcb_timestamp_t time);

    X11Connection connection_;
    const X11PressedKeys& pressed_;
    std::function<void(XKeycode)> onRepeat_;
    std::function<void()> catchUp_;
    X11Layout layout_;
    std::vector<SwallowedKey> keys_;
    std::vector<Grab> grabs_;
    xcb_atom_t activeWindowAtom_ = XCB_NONE;
    xcb_window_t window_ = XCB_NONE;  // that has the grabs; XCB_NONE while suspended
    bool suspended_ = false;
    XKeycode activeKey_ = 0;      // the key whose grab is active
    std::bitset<256> swallowed_;  // keys whose press was swallowed
};

}  // namespace quorvi
