#include <gtest/gtest.h>

#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

// On a desktop that knows nothing of icons over D-Bus.
TEST(Tray, OfTheOlderKindHoldsTheIconAndItsMenu) {
    const Process tray({"trayer", "--edge", "top", "--align", "right", "--height", "32"});
    Process quorvi({builtProgram("quorvi"), "--print-stages"}, {"QUORVI_API_KEY=not a key"});
    // The menu is the program's only window that the window manager has no part in; its last entry
    // is "Quit Quorvi". A click while the tray still moves the icon has no effect: the user clicks
    // again.
    const std::string quitByTheMenu =
        "ours='(\"quorvi\" \"Quorvi\")'; "
        "icon=$(xwininfo -root -tree | grep -A99 '\"trayer\"' | grep -m1 \"$ours\" | "
        "awk '{print $1}') && "
        "xdotool mousemove --window $icon 7 10 mousemove --window $icon 10 10 click 3; "
        "for look in $(seq 50); do "
        "xwininfo -root -children | grep -q \"$ours\" && exec xdotool key Up Return; done";
    EXPECT_TRUE(eventually([&] {
        shell(quitByTheMenu);
        return quorvi.hasEnded();
    }));
}

}  // namespace
}  // namespace quorvi::test
