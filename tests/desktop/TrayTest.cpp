#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <string>

#include "tests/support/Process.h"
#include "tests/support/ScreenReader.h"
#include "tests/support/TestUser.h"

// The program on desktops that know nothing of icons over D-Bus.
namespace quorvi::test {
namespace {

constexpr auto refusedKey = "QUORVI_API_KEY=not a key";  // refused, so the key stays in memory

// Where the icon is, once it lies in the tray's window.
std::optional<std::string> iconPlace() {
    const auto line = shell(R"(xwininfo -root -tree | grep -A99 '("panel" "trayer")' |)"
                            R"( grep -m1 '("quorvi" "Quorvi")')");
    const auto at = line.rfind("  +");
    int x = 0, y = 0;
    if (at == line.npos || std::sscanf(line.c_str() + at, " +%d+%d", &x, &y) != 2) return {};
    return std::to_string(x + 10) + " " + std::to_string(y + 10);
}

// A menu is the only window of the program's that the window manager has no part in.
bool menuIsOpen() {
    return shell("xwininfo -root -children").find("(\"quorvi\" \"Quorvi\")") != std::string::npos;
}

TEST(Tray, OfTheOlderKindHoldsTheIconAndItsMenu) {
    const Process tray({"trayer", "--edge", "top", "--align", "right", "--height", "32"});
    Process quorvi({QUORVI_PROGRAM, "--print-stages"}, {refusedKey});
    TestUser user;
    const auto choose = [&](std::uint8_t button, int fromTheEnd) {
        std::optional<std::string> place;
        ASSERT_TRUE(eventually([&] { return (place = iconPlace()).has_value(); }));
        shell("xdotool mousemove " + *place);
        user.click(button);
        ASSERT_TRUE(eventually(menuIsOpen)) << shell("xwininfo -root -children");
        user.tap(key::up, fromTheEnd);
        user.tap(key::enter);
    };
    choose(3, 3);  // "Reset dictation"
    while (quorvi.readLine().find("Dictation reset.") == std::string::npos) continue;
    choose(1, 1);  // "Quit Quorvi"
    EXPECT_EQ(quorvi.wait(), 0);
}

TEST(Tray, ThatIsMissingIsToldInTheWindowWhichOpens) {
    Process quorvi({QUORVI_PROGRAM}, {refusedKey});
    ScreenReader reader(quorvi.pid());
    EXPECT_TRUE(reader.sees(ScreenReader::label,
                            "This desktop shows no tray icons. Quorvi keeps running when you close "
                            "this window; start it again to come back here."));
    EXPECT_TRUE(reader.press(ScreenReader::pushButton, "Quit Quorvi"));
    EXPECT_EQ(quorvi.wait(), 0);
}

}  // namespace
}  // namespace quorvi::test
