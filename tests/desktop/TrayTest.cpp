#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <optional>
#include <string>

#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/ScreenReader.h"
#include "tests/support/desktop/TestUser.h"

// The program on desktops that know nothing of icons over D-Bus.
namespace quorvi::test {
namespace {

constexpr auto refusedKey = "QUORVI_API_KEY=not a key";  // refused, so the key stays in memory

struct Place {
    int width = 0, height = 0, x = 0, y = 0;
};

// Of the first of the program's windows in a list of xwininfo's.
std::optional<Place> placeIn(const std::string& list) {
    const auto line = shell(list + R"( | grep -m1 '("quorvi" "Quorvi")')");
    const auto size = line.find(")  "), corner = line.rfind("  +");
    Place place;
    if (size == line.npos || corner == line.npos ||
        std::sscanf(line.c_str() + size, ") %dx%d", &place.width, &place.height) != 2 ||
        std::sscanf(line.c_str() + corner, " +%d+%d", &place.x, &place.y) != 2)
        return std::nullopt;
    return place;
}

// Once it lies in the tray's window.
std::optional<Place> icon() {
    return placeIn(R"(xwininfo -root -tree | grep -A99 '("panel" "trayer")')");
}

// A menu is the only window of the program's that the window manager has no part in.
std::optional<Place> menu() {
    return placeIn("xwininfo -root -children");
}

TEST(Tray, OfTheOlderKindHoldsTheIconAndItsMenu) {
    const Process tray({"trayer", "--edge", "top", "--align", "right", "--height", "32"});
    Process quorvi({builtProgram("quorvi"), "--print-stages"}, {refusedKey});
    TestUser user;
    const auto click = [&](std::uint8_t button, int x, int y) {
        // On its way there the pointer moves, which menus insist on.
        for (const int step : {3, 0})
            shell("xdotool mousemove " + std::to_string(x + step) + " " + std::to_string(y));
        user.click(button);
    };
    // A click comes to nothing while the tray still moves the icon, or the menu is about to open:
    // the user clicks again.
    const auto soon = [](const std::function<bool()>& condition) {
        for (int look = 0; look < 50; ++look)
            if (condition()) return true;
        return false;
    };
    // Chooses the entry that lies so far above the menu's end.
    const auto choose = [&](std::uint8_t button, int aboveTheEnd,
                            const std::function<bool()>& isDone) {
        return eventually([&] {
            if (isDone()) return true;
            if (const auto place = icon(); place && !menu())
                click(button, place->x + 10, place->y + 10);
            std::optional<Place> open;
            if (!soon([&] { return (open = menu()).has_value(); })) return false;
            click(1, open->x + 60, open->y + open->height - aboveTheEnd);
            return soon(isDone);
        });
    };
    EXPECT_TRUE(choose(3, 57, [] {  // "Reset dictation"
        return shell(builtProgram("quorvi") + " status").find("Dictation reset.") !=
               std::string::npos;
    }));
    EXPECT_TRUE(choose(1, 11, [&] { return quorvi.hasEnded(); }));  // "Quit Quorvi"
}

TEST(Tray, ThatIsMissingIsToldInTheWindowWhichOpens) {
    Process quorvi({builtProgram("quorvi")}, {refusedKey});
    ScreenReader reader(quorvi.pid());
    EXPECT_TRUE(reader.sees(ScreenReader::label,
                            "This desktop shows no tray icons. Quorvi keeps running when you close "
                            "this window; start it again to come back here."));
    EXPECT_TRUE(reader.press(ScreenReader::pushButton, "Quit Quorvi"));
    EXPECT_EQ(quorvi.wait(), 0);
}

}  // namespace
}  // namespace quorvi::test
