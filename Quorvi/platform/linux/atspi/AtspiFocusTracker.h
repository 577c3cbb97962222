#pragma once

#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiProtocol.h"

namespace quorvi::atspi {

// The applications' events about focus and active windows, latest first. Only hints: events get
// lost or arrive late, so each is checked with its application. Written by the bus's thread, read
// by the querying one.
class AtspiFocusTracker {
public:
    void focusChanged(const ObjectRef& object, bool focused);
    void windowActiveChanged(const ObjectRef& window, bool active);
    // Adds an object that was found focused without an event; any event is newer.
    void found(const ObjectRef& object);
    void peerLeft(const std::string& bus);
    void clear();

    // The objects of this application that reported the focus, latest first.
    std::vector<ObjectRef> focusedOf(const std::string& bus) const;
    std::optional<ObjectRef> activeWindowOf(const std::string& bus) const;

    // The application whose window became active last, unless it was deactivated since.
    std::optional<std::string> activeApplication() const;

private:
    struct Peer {
        std::deque<ObjectRef> focused;
        std::optional<ObjectRef> activeWindow;
    };

    mutable std::mutex mutex_;
    std::map<std::string, Peer> peers_;
    std::optional<std::string> active_;
};

}  // namespace quorvi::atspi
