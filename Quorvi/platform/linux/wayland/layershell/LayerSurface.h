#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

class WaylandConnection;

// A picture above all windows, at the bottom of the screen that the compositor chooses. It never
// gets the keyboard, and lets clicks pass except where the picture says. Main thread; a thread of
// its own speaks to the compositor, and connects for the first picture. The scheduler outlives it.
class LayerSurface {
public:
    struct Area {
        int x = 0, y = 0, width = 0, height = 0;
    };
    struct Picture {
        int width = 0, height = 0;          // in points
        int scale = 1;                      // pixels of a point
        std::vector<std::uint32_t> pixels;  // premultiplied ARGB, row by row
        std::vector<Area> clickable;        // in points
    };
    enum class PointerEvent { moved, pressed, released, left };
    // Called on the main thread.
    struct Events {
        std::function<void(PointerEvent event, double x, double y)> onPointer;  // in points
        // A picture of that scale would be as sharp as the screen.
        std::function<void(int scale)> onScale;
        // Its screen is gone; the next picture is shown on another.
        std::function<void()> onClosed;
    };

    static bool isOffered(const WaylandConnection& connection);

    // `margin` is the distance from the bottom of what the desktop's bars leave of the screen.
    LayerSurface(Scheduler& scheduler, int margin, Events events);
    ~LayerSurface();
    LayerSurface(const LayerSurface&) = delete;
    LayerSurface& operator=(const LayerSurface&) = delete;

    // Shows the picture, or this one in place of the last. Of pictures that come faster than the
    // screen shows them the last counts.
    void show(Picture picture);
    void hide();

private:
    class Session;
    class Thread;
    std::unique_ptr<Thread> thread_;
};

}  // namespace quorvi
