#include "Quorvi/platform/linux/wayland/input/FakeInputPoster.h"

#include <linux/input-event-codes.h>

#include <chrono>
#include <memory>
#include <ranges>

#include "Quorvi/platform/linux/wayland/input/SeatKeymap.h"
#include "Quorvi/platform/linux/xkb/KeymapText.h"

namespace quorvi {
namespace {

// While KWin still keeps the connection waiting. Later the user has been told that the text is on
// the clipboard, and may have pasted it.
constexpr auto patience = std::chrono::milliseconds(500);

constexpr std::uint32_t allModifiers[] = {KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTCTRL,
                                          KEY_RIGHTCTRL, KEY_LEFTALT,    KEY_RIGHTALT,
                                          KEY_LEFTMETA,  KEY_RIGHTMETA};

}  // namespace

void FakeInputPoster::press(const ChordKeys& keys) {
    const auto latest = std::chrono::steady_clock::now() + patience;
    input_.run([keys, latest](WaylandInput::Session* session) {
        if (!session || std::chrono::steady_clock::now() > latest) return;
        auto& input = session->fake;
        if (!input) input = std::make_unique<FakeInput>(session->connection);
        const auto placed = keys.placedIn(KeymapText(seatKeymap(session->connection)));
        for (const auto key : allModifiers) input->key(key, false);
        for (const auto key : placed.modifiers) input->key(key, true);
        input->key(placed.key, true);
        input->key(placed.key, false);
        for (const auto key : std::views::reverse(placed.modifiers)) input->key(key, false);
    });
}

}  // namespace quorvi
