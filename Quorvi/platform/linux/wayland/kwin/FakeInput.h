#pragma once

#include <cstdint>

#include "Quorvi/platform/linux/wayland/WaylandConnection.h"

struct org_kde_kwin_fake_input;

namespace quorvi {

// KWin's keys for the focused window: those of the user's own keyboard, with its layout and what
// the user holds. KWin offers them to a program whose desktop entry asks for them. For adapter
// sources only; the thread of its connection, which outlives it.
class FakeInput {
public:
    static bool isOffered(const WaylandConnection& connection);

    explicit FakeInput(WaylandConnection& connection);
    ~FakeInput();
    FakeInput(const FakeInput&) = delete;
    FakeInput& operator=(const FakeInput&) = delete;

    // `key` as Linux counts them. Nothing happens where it is not offered.
    void key(std::uint32_t key, bool isDown);

private:
    org_kde_kwin_fake_input* input_ = nullptr;
};

}  // namespace quorvi
