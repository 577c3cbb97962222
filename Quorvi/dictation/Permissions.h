#pragma once

#include <functional>

#include "Quorvi/dictation/ApiKey.h"
#include "Quorvi/dictation/DictationStatus.h"
#include "Quorvi/input/GlobalHotkey.h"
#include "Quorvi/platform/Accessibility.h"
#include "Quorvi/platform/SystemPermissions.h"
#include "Quorvi/platform/Workspace.h"

namespace quorvi {

// What the program may do: use the microphone, the accessibility interface and the keyboard. Looks
// every two seconds, and keeps the keyboard monitor and the API key's state up to date while doing
// so. Main thread; owned by the controller.
class Permissions {
public:
    // Everything outlives this object.
    struct Environment {
        Scheduler& scheduler;
        SystemPermissions& system;
        Accessibility& accessibility;
        Workspace& workspace;
        GlobalHotkey& hotkey;
        ApiKey& key;
        const DictationStatus& status;
        bool desktopHasShortcut = false;  // see AppModel::Environment::desktopShortcut
    };

    explicit Permissions(Environment environment) : environment_(environment) {}

    bool microphone() const { return microphone_; }
    bool accessibility() const { return accessibility_; }
    // The keyboard monitor runs.
    bool keyboard() const { return keyboard_; }
    // Text can be inserted. Where the desktop keeps the shortcut, that needs no keyboard monitor.
    bool insertion() const {
        return accessibility_ && (keyboard_ || environment_.desktopHasShortcut);
    }
    // A dictation has all it needs but perhaps the shortcut, the API key included.
    bool canDictate() const { return environment_.key.isThere() && microphone_ && insertion(); }
    // And the shortcut works.
    bool ready() const { return canDictate() && keyboard_; }

    // Called after a change of one of them.
    std::function<void()> onChange;
    // Called after each look, when all of them are known.
    std::function<void()> onRefresh;

    // Looks now, and from then on regularly and when the machine wakes.
    void start();
    // Looks no more.
    void stop();
    // Looks now. Leaves the API key alone during a dictation. Does nothing after stop().
    void refresh();

    // Asks for what can be asked for, and otherwise opens the desktop's settings.
    void requestMicrophone();
    void requestAccessibility();

private:
    void set(bool& state, bool now);

    Environment environment_;
    bool microphone_ = false;
    bool accessibility_ = false;
    bool keyboard_ = false;
    bool isStopped_ = false;
    Timer poll_;
    Subscription wake_;
};

}  // namespace quorvi
