#pragma once

#include <vector>

namespace quorvi {

// What a window that no window manager places has to know of the desktop. A value.
struct Surroundings {
    // A strip along an edge of the whole screen that one of the desktop's bars keeps for itself, in
    // the display's own pixels.
    struct Bar {
        enum class Edge { left, right, top, bottom };
        Edge edge = Edge::bottom;
        int x = 0, y = 0, width = 0, height = 0;
        bool operator==(const Bar&) const = default;
    };

    bool isComposited = false;   // windows can be translucent
    bool reducesMotion = false;  // the user wants as little movement as possible
    std::vector<Bar> bars;

    bool operator==(const Surroundings&) const = default;
};

}  // namespace quorvi
