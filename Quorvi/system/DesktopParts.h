#pragma once

#include <optional>
#include <vector>

#include "Quorvi/platform/DesktopCapabilities.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// One thing that Quorvi needs of a Wayland desktop. A plain value.
struct DesktopPart {
    Message subject;
    Message finding;  // what serves for it, or what does not exist
    bool isOffered = false;
    std::optional<Message> consequence;  // of its absence, and what to do
};

// What the desktop offers for the windows of Wayland programs, in the order of a dictation; empty
// where it is not one of Wayland.
// where it is not one of Wayland. `keysAreAllowed`: the user's leave, where one is needed.
std::vector<DesktopPart> describe(const DesktopCapabilities& desktop, bool keysAreAllowed);

}  // namespace quorvi
