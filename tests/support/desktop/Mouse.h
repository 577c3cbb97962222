#pragma once

#include <linux/input-event-codes.h>
#include <wayland-client.h>

#include "Quorvi/platform/linux/wayland/WaylandConnection.h"
#include "protocols/virtual-pointer.h"

namespace quorvi::test {

// A mouse, on a connection of its own.
class Mouse {
public:
    Mouse() {
        auto* manager = connection_.bind<zwlr_virtual_pointer_manager_v1>(
            zwlr_virtual_pointer_manager_v1_interface, 1);
        pointer_ = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(manager, nullptr);
        zwlr_virtual_pointer_manager_v1_destroy(manager);
        connection_.synchronise();
    }
    ~Mouse() { zwlr_virtual_pointer_v1_destroy(pointer_); }
    Mouse(const Mouse&) = delete;
    Mouse& operator=(const Mouse&) = delete;

    void click(std::uint32_t x, std::uint32_t y) {
        for (const auto nudge : {1U, 0U})
            zwlr_virtual_pointer_v1_motion_absolute(pointer_, 0, x + nudge, y, 1280, 800);
        for (const auto state : {1U, 0U}) {
            zwlr_virtual_pointer_v1_button(pointer_, 0, BTN_LEFT, state);
            zwlr_virtual_pointer_v1_frame(pointer_);
        }
        connection_.synchronise();
    }

private:
    WaylandConnection connection_;
    zwlr_virtual_pointer_v1* pointer_;
};

}  // namespace quorvi::test
