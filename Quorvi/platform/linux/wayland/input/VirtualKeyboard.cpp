#include "Quorvi/platform/linux/wayland/input/VirtualKeyboard.h"

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

#include <chrono>
#include <string_view>

#include "Quorvi/platform/linux/posix/Descriptor.h"
#include "Quorvi/platform/linux/wayland/input/SeatKeymap.h"
#include "protocols/virtual-keyboard.h"

namespace quorvi {
namespace {

// The compositor looks the parts up in the system's keyboard data, which it can't be without.
constexpr std::string_view usLayout = R"xkb(xkb_keymap {
xkb_keycodes { include "evdev+aliases(qwerty)"
};
xkb_types{include "complete"};
xkb_compat{include "complete"};
xkb_symbols{include "pc+us+inet(evdev)"};
};)xkb";

std::uint32_t now() {
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                          std::chrono::steady_clock::now().time_since_epoch())
                                          .count());
}

}  // namespace

bool VirtualKeyboard::isOffered(const WaylandConnection& connection) {
    return connection.versionOf(zwp_virtual_keyboard_manager_v1_interface.name) > 0;
}

VirtualKeyboard::VirtualKeyboard(WaylandConnection& connection) {
    auto* manager = connection.bind<zwp_virtual_keyboard_manager_v1>(
        zwp_virtual_keyboard_manager_v1_interface, 1);
    if (!manager || !connection.seat()) return;
    keyboard_ = zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(manager, connection.seat());
    zwp_virtual_keyboard_manager_v1_destroy(manager);
}

VirtualKeyboard::~VirtualKeyboard() {
    if (keyboard_) zwp_virtual_keyboard_v1_destroy(keyboard_);
}

void VirtualKeyboard::useUsLayout() {
    const Descriptor file(memfd_create("keymap", MFD_CLOEXEC));
    const auto size = usLayout.size() + 1;  // with its zero
    if (write(file.get(), usLayout.data(), size) == static_cast<ssize_t>(size))
        useLayout(WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file.get(), static_cast<std::uint32_t>(size));
}

void VirtualKeyboard::useLayout(std::uint32_t format, int file, std::uint32_t size) {
    auto layout = keymapText(file, size);
    if (!keyboard_ || layout == layout_) return;
    layout_ = std::move(layout);
    zwp_virtual_keyboard_v1_keymap(keyboard_, format, file, size);
}

void VirtualKeyboard::key(std::uint32_t key, bool isDown, std::uint32_t time) {
    if (keyboard_ && !layout_.empty()) zwp_virtual_keyboard_v1_key(keyboard_, time, key, isDown);
}

void VirtualKeyboard::key(std::uint32_t key, bool isDown) {
    this->key(key, isDown, now());
}

void VirtualKeyboard::modifiers(std::uint32_t held, std::uint32_t latched, std::uint32_t locked,
                                std::uint32_t group) {
    if (keyboard_ && !layout_.empty())
        zwp_virtual_keyboard_v1_modifiers(keyboard_, held, latched, locked, group);
}

}  // namespace quorvi
