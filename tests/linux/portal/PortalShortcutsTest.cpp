#include "Quorvi/platform/linux/portal/PortalShortcuts.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/StandInPortal.h"

namespace quorvi::test {
namespace {

TEST(PortalShortcuts, AGrantedKeyIsHeldAndEndsThoughItsReleaseIsLost) {
    StandInPortal desktop;
    LoopScheduler scheduler;
    PortalShortcuts shortcuts(scheduler, false);
    std::string told;
    shortcuts.start(
        [&](const SwallowedKey&, ShortcutSource::Change change) {
            told += change == ShortcutSource::Change::pressed ? "pressed " : "released ";
        },
        [&] { told += shortcuts.isBound() ? "bound " : "unbound "; });
    const auto heard = [&](const std::string& expected) {
        EXPECT_TRUE(until(scheduler, [&] { return told.size() >= expected.size(); }));
        EXPECT_EQ(std::exchange(told, {}), expected);
    };
    const std::vector f9{SwallowedKey{101, 0}}, f8{SwallowedKey{100, 0}};
    shortcuts.bind(f9);
    heard("unbound bound ");
    shortcuts.bind({f9[0], {keyCode::escape, 0}});  // asks nothing anew
    desktop.tell("Activated", 5);
    desktop.tell("Deactivated");
    heard("pressed released ");
    desktop.tell("Activated", 5);
    heard("pressed released ");

    desktop.grants = false;
    shortcuts.bind(f8);
    heard("unbound ");
    EXPECT_TRUE(until(scheduler, [&] { return desktop.binds == 2; }));
    scheduler.runFor(std::chrono::milliseconds(50));
    shortcuts.bind(f8);
    desktop.grants = true;
    shortcuts.bind(f9);
    heard("bound ");
    EXPECT_EQ(desktop.binds, 3) << "the user who has refused a key is not asked again";
}

}  // namespace
}  // namespace quorvi::test
