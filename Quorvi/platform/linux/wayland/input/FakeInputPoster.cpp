#include "Quorvi/platform/linux/wayland/input/FakeInputPoster.h"

#include <linux/input-event-codes.h>

#include <chrono>
#include <memory>
#include <ranges>

#include "Quorvi/platform/linux/wayland/input/SeatKeymap.h"
#include "Quorvi/platform/linux/xkb/KeymapText.h"

namespace quorvi {
namespace {

constexpr std::uint32_t evdevOffset = 8;

// While KWin still keeps the connection waiting. Later the user has been told that the text is on
// the clipboard, and may have pasted it.
constexpr auto patience = std::chrono::milliseconds(500);

constexpr std::uint32_t allModifiers[] = {KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTCTRL,
                                          KEY_RIGHTCTRL, KEY_LEFTALT,    KEY_RIGHTALT,
                                          KEY_LEFTMETA,  KEY_RIGHTMETA};

// Where the keys of a US keyboard are in the layout of now.
ChordKeys inLayout(ChordKeys keys, WaylandConnection& connection) {
    if (keys.key != KEY_V) return keys;
    const KeymapText layout(seatKeymap(connection));
    if (layout.isEmpty() || layout.types(KEY_V + evdevOffset, "v")) return keys;
    const auto position = layout.positionOf("v");
    if (!position) return ChordKeys::of(PasteChord::shiftInsert);
    keys.key = *position - evdevOffset;
    return keys;
}

}  // namespace

void FakeInputPoster::press(const ChordKeys& keys) {
    const auto latest = std::chrono::steady_clock::now() + patience;
    input_.run([keys, latest](WaylandInput::Session* session) {
        if (!session || std::chrono::steady_clock::now() > latest) return;
        auto& input = session->fake;
        if (!input) input = std::make_unique<FakeInput>(session->connection);
        const auto placed = inLayout(keys, session->connection);
        for (const auto key : allModifiers) input->key(key, false);
        for (const auto key : placed.modifiers) input->key(key, true);
        input->key(placed.key, true);
        input->key(placed.key, false);
        for (const auto key : std::views::reverse(placed.modifiers)) input->key(key, false);
    });
}

}  // namespace quorvi
