#pragma once

#include <functional>

#include "Quorvi/input/GlobalHotkey.h"
#include "Quorvi/platform/LocalKeyMonitor.h"

namespace quorvi {

// Lets the user choose a shortcut: from begin() to end() the next suitable key press in a window of
// this program is the choice, and Escape ends it without one. Meanwhile the present shortcut does
// nothing. Main thread; owned by the controller. Everything that it is made with outlives it.
class ShortcutCapture {
public:
    ShortcutCapture(LocalKeyMonitor& keys, GlobalHotkey& hotkey) : keys_(keys), hotkey_(hotkey) {}

    bool isOn() const { return isOn_; }
    // The last key press was not suitable.
    bool hasRefused() const { return hasRefused_; }

    // Called after a change of the above.
    std::function<void()> onChange;
    // Called with the choice before the capture ends.
    std::function<void(Hotkey)> onChosen;
    // Whether the desktop can have it; otherwise it is not suitable.
    std::function<bool(const Hotkey&)> suits;
    // Called for each key press that is not suitable.
    std::function<void()> onRefused;

    void begin();
    void end();

private:
    bool handle(const LocalKeyEvent& event);
    void changed() {
        if (onChange) onChange();
    }

    LocalKeyMonitor& keys_;
    GlobalHotkey& hotkey_;
    bool isOn_ = false;
    bool hasRefused_ = false;
    StandaloneModifierCapture modifier_;
    Subscription monitor_;
};

}  // namespace quorvi
