#include "Quorvi/platform/linux/x11/desktop/X11Bars.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "Quorvi/platform/linux/x11/X11Connection.h"

namespace quorvi {

namespace {

using Bar = Surroundings::Bar;
using Numbers = std::vector<std::uint32_t>;

constexpr std::uint32_t mostWindows = 4096;
constexpr std::size_t partial = 12;  // numbers of a strut with its beginnings and ends
constexpr std::size_t whole = 4;     // and of one along whole edges

Numbers propertyOf(const X11Connection& connection, xcb_window_t window, xcb_atom_t property) {
    const auto reply =
        connection.property(window, property, XCB_GET_PROPERTY_TYPE_ANY, mostWindows);
    const auto numbers = numbersOf(reply);
    return {numbers.begin(), numbers.end()};
}

// A strut is the depths at the left, right, top and bottom edge of the screen, then where each
// begins and ends along its edge.
void addBars(Numbers strut, int width, int height, std::vector<Bar>& bars) {
    if (strut.size() < whole) return;
    if (strut.size() < partial) {
        strut.resize(whole);
        const auto right = static_cast<std::uint32_t>(width - 1);
        const auto bottom = static_cast<std::uint32_t>(height - 1);
        strut.insert(strut.end(), {0, bottom, 0, bottom, 0, right, 0, right});
    }
    constexpr std::array edges{Bar::Edge::left, Bar::Edge::right, Bar::Edge::top,
                               Bar::Edge::bottom};
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const bool upright = i < 2;
        const auto depth = static_cast<int>(
            std::min<std::uint32_t>(strut[i], std::uint32_t(upright ? width : height)));
        if (depth == 0) continue;
        const auto begin = static_cast<int>(strut[whole + 2 * i]);
        const auto length = static_cast<int>(strut[whole + 2 * i + 1]) - begin + 1;
        Bar bar{.edge = edges[i]};
        bar.x = upright ? (i == 1 ? width - depth : 0) : begin;
        bar.y = upright ? begin : (i == 3 ? height - depth : 0);
        bar.width = upright ? depth : length;
        bar.height = upright ? length : depth;
        bars.push_back(bar);
    }
}

}  // namespace

std::vector<Bar> x11Bars() {
    const X11Connection connection;
    if (!connection.isAlive()) return {};
    const auto size = connection.reply<xcb_get_geometry_reply>(
        xcb_get_geometry(connection.get(), connection.root()));
    if (!size) return {};
    const auto strut = connection.atom("_NET_WM_STRUT");
    const auto strutPartial = connection.atom("_NET_WM_STRUT_PARTIAL");
    std::vector<Bar> bars;
    for (const auto window :
         propertyOf(connection, connection.root(), connection.atom("_NET_CLIENT_LIST"))) {
        auto numbers = propertyOf(connection, window, strutPartial);
        if (numbers.empty()) numbers = propertyOf(connection, window, strut);
        addBars(std::move(numbers), size->width, size->height, bars);
    }
    return bars;
}

}  // namespace quorvi
