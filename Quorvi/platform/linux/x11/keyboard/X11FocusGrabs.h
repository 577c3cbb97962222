#pragma once

#include <bitset>
#include <functional>
#include <vector>

#include "Quorvi/platform/KeyEventTap.h"
#include "Quorvi/platform/linux/x11/keyboard/X11Layout.h"
#include "Quorvi/platform/linux/x11/keyboard/X11PressedKeys.h"

namespace quorvi {

// Keeps declared key presses from the applications by grabbing them on the window that has the
// keyboard focus, and follows the focus from window to window. On the focus window, because a grab
// on the root window makes toolkits believe that they lost the focus while the key is held. Has a
// connection of its own: the server hides raw events from a client whose grab is active.
//
// A grabbed press freezes the keyboard until this class has said where it goes, which it does
// within the same turn. Held modifiers stay ours while a grabbed key is down: giving one back would
// end the grab, and the key's repeats, now without its modifiers, would be typed into the
// application. Any other key is given back, which ends the grab as well: should the swallowed key
// be released right then, the application sees a release without a press and ignores it.
//
// Input thread only.
class X11FocusGrabs {
public:
    // `onRepeat` hears of every auto-repeat of a swallowed key. `catchUp` is asked to process all
    // raw events that the server has sent.
    X11FocusGrabs(const X11PressedKeys& pressed, std::function<void(XKeycode)> onRepeat,
                  std::function<void()> catchUp);

    X11Connection& connection() { return connection_; }

    // False when the server does not support this.
    bool start();

    void setLayout(const X11Layout& layout);
    void setSwallowed(std::vector<SwallowedKey> keys);

    // Until resume() no key is grabbed, nor is the keyboard. On return the server has done it.
    void suspend();
    void resume();

    // Processes what has arrived; false when there was nothing. The other one looks only at what
    // some call to the server has read meanwhile.
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
    void allow(std::uint8_t mode);
    void giveBack();

    X11Connection connection_;
    const X11PressedKeys& pressed_;
    std::function<void(XKeycode)> onRepeat_;
    std::function<void()> catchUp_;
    X11Layout layout_;
    std::vector<SwallowedKey> keys_;
    std::vector<Grab> grabs_;
    xcb_atom_t activeWindowAtom_ = XCB_NONE;
    xcb_window_t window_ = XCB_NONE;  // where the grabs are; none while suspended
    bool suspended_ = false;
    XKeycode activeKey_ = 0;      // the key whose grab is active
    std::bitset<256> swallowed_;  // keys whose press was swallowed
};

}  // namespace quorvi
