#include "Quorvi/platform/linux/wayland/input/SeatKeymap.h"

#include <sys/mman.h>
#include <wayland-client.h>

#include "Quorvi/platform/linux/posix/Descriptor.h"

namespace quorvi {
namespace {

struct Listeners {
    static void capabilities(void* data, wl_seat*, std::uint32_t all) {
        *static_cast<bool*>(data) = (all & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
    }
    static void name(void*, wl_seat*, const char*) {}
    static constexpr wl_seat_listener seat{capabilities, name};

    static void keymap(void* data, wl_keyboard*, std::uint32_t format, int file,
                       std::uint32_t size) {
        const Descriptor closed(file);
        if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
            *static_cast<std::string*>(data) = keymapText(file, size);
    }
    static void enter(void*, wl_keyboard*, std::uint32_t, wl_surface*, wl_array*) {}
    static void leave(void*, wl_keyboard*, std::uint32_t, wl_surface*) {}
    static void key(void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t,
                    std::uint32_t) {}
    static void modifiers(void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t,
                          std::uint32_t, std::uint32_t) {}
    static void repeat(void*, wl_keyboard*, std::int32_t, std::int32_t) {}
    static constexpr wl_keyboard_listener keyboard{keymap, enter, leave, key, modifiers, repeat};
};

}  // namespace

std::string keymapText(int file, std::uint32_t size) {
    void* memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (memory == MAP_FAILED) return {};
    std::string content(static_cast<const char*>(memory), size);
    munmap(memory, size);
    return content;
}

std::string seatKeymap(WaylandConnection& connection) {
    bool hasKeyboard = false;
    const WaylandObject<wl_seat, wl_seat_destroy> seat(
        connection.bind<wl_seat>(wl_seat_interface, 1));
    if (!seat) return {};
    wl_seat_add_listener(seat.get(), &Listeners::seat, &hasKeyboard);
    if (!connection.synchronise() || !hasKeyboard) return {};
    std::string text;
    const WaylandObject<wl_keyboard, wl_keyboard_destroy> keyboard(
        wl_seat_get_keyboard(seat.get()));
    wl_keyboard_add_listener(keyboard.get(), &Listeners::keyboard, &text);
    connection.synchronise();
    return text;
}

}  // namespace quorvi
