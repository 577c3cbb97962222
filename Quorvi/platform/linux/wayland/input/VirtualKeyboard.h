#pragma once

#include <cstdint>
#include <string>

#include "Quorvi/platform/linux/wayland/WaylandConnection.h"

struct zwp_virtual_keyboard_v1;

namespace quorvi {

// A keyboard that this program plays for the focused window, with a layout of its own. For the
// thread of its connection, which outlives it; the caller flushes.
class VirtualKeyboard {
public:
    // Bits of a mask of held modifiers, as the layout below numbers them.
    enum Modifier : std::uint32_t { shift = 1, lock = 2, control = 4, alt = 8, super = 64 };

    static bool isOffered(const WaylandConnection& connection);

    explicit VirtualKeyboard(WaylandConnection& connection);
    ~VirtualKeyboard();
    VirtualKeyboard(const VirtualKeyboard&) = delete;
    VirtualKeyboard& operator=(const VirtualKeyboard&) = delete;

    // Gives it the US layout, whatever the user's is. To be called before the first key, or this:
    void useUsLayout();
    // The layout in a file, as the compositor has sent it; nothing happens if it is the last one.
    void useLayout(std::uint32_t format, int file, std::uint32_t size);

    // `key` is an evdev code. The modifiers have to be told besides their keys.
    void key(std::uint32_t key, bool isDown, std::uint32_t time);
    void key(std::uint32_t key, bool isDown);
    void modifiers(std::uint32_t held, std::uint32_t latched = 0, std::uint32_t locked = 0,
                   std::uint32_t group = 0);

private:
    zwp_virtual_keyboard_v1* keyboard_ = nullptr;
    std::string layout_;
};

}  // namespace quorvi
