#pragma once

#include <optional>
#include <vector>

#include "Quorvi/platform/DesktopShortcut.h"
#include "QuorviCore/messages/Message.h"
#include "QuorviCore/shortcut/Hotkey.h"

namespace quorvi {

// Which shortcuts this desktop lets the user have. Main thread.
class ShortcutChoice {
public:
    // `desktop` is null where the input hook sees all keys, and outlives this object.
    explicit ShortcutChoice(DesktopShortcut* desktop) : desktop_(desktop) {}

    // What the desktop can do; everything where it does not keep the shortcut itself.
    DesktopShortcut::State desktop() const {
        return desktop_ ? desktop_->state() : DesktopShortcut::State{};
    }
    void setListed(bool listed) {
        if (desktop_) desktop_->setListed(listed);
    }

    // The shortcuts to choose from at once.
    std::vector<Hotkey> proposals() const;
    bool suits(const Hotkey& shortcut) const;
    // What to say of one that does not.
    Message unsuitable() const;
    // Why the shortcut does nothing, and what to do; nothing if it works or if that is unknown.
    std::optional<Message> problem(const Hotkey& shortcut) const;

private:
    DesktopShortcut* desktop_;
};

}  // namespace quorvi
