#pragma once

#include <vector>

namespace quorvi {

// What a window that the window manager does not place needs to know about the desktop. A plain
// value.
struct Surroundings {
    // A strip along an edge of the whole screen that a bar of the desktop reserves, in the
    // display's pixels.
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
