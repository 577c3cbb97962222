#pragma once

#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi::test {

// Another program that reads the clipboard, one step of the protocol at a time. Blocks its caller
// while it waits for an answer.
class ForeignRequestor {
public:
    ForeignRequestor();

    std::uint32_t atom(const std::string& name) const { return connection_.atom(name); }

    // Whether the owner answers with data, which is then in property().
    bool request(const std::string& target, std::uint32_t time = XCB_CURRENT_TIME);

    // The type of what is in the property; its data, taken out of it.
    std::uint32_t type = 0;
    Bytes take() { return take(property_); }
    Bytes take(std::uint32_t property);
    std::vector<std::uint32_t> takeUnits();
    void put(const std::vector<std::uint32_t>& units) {
        xcb_change_property(c_, XCB_PROP_MODE_REPLACE, window_, property_, atom("ATOM_PAIR"), 32,
                            static_cast<std::uint32_t>(units.size()), units.data());
    }
    // All pieces of a transfer whose announcement is in the property.
    Bytes takePieces();

private:
    template <class Event>
    Event next(int wanted) {
        for (;;) {
            const auto event = ownXcb(xcb_wait_for_event(c_));
            if (!event) throw std::runtime_error("the X server is gone");
            if (xcbEventType(*event) == wanted) return reinterpret_cast<const Event&>(*event);
        }
    }

    X11Connection connection_;
    xcb_connection_t* c_ = connection_.get();
    std::uint32_t window_ = 0;
    std::uint32_t property_ = connection_.atom("FOREIGN_PROPERTY");
};

}  // namespace quorvi::test
