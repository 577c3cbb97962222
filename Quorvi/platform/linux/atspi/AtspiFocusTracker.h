#pragma once

#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiProtocol.h"

namespace quorvi::atspi {

// What applications have said about focus and active windows, latest first. Only hints: events get
// lost, arrive late or never come, so each is checked with its application before it is believed.
// Written by the bus's thread and read by the querying one.
class AtspiFocusTracker {
public:
    void focusChanged(const ObjectRef& object, bool focused);
    void windowActiveChanged(const ObjectRef& window, bool active);
    // An object that was found to have the focus without an event; any event is newer.
    void found(const ObjectRef& object);
    void peerLeft(const std::string& bus);
    void clear();

    // Objects of this application that said they have the focus, the latest first.
    std::vector<ObjectRef> focusedOf(const std::string& bus) const;
    std::optional<ObjectRef> activeWindowOf(const std::string& bus) const;

    // The application whose window became active last and has not said otherwise since.
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
