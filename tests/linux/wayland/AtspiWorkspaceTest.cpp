#include "Quorvi/platform/linux/atspi/AtspiWorkspace.h"

#include <gtest/gtest.h>

#include <utility>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/wayland/sway/SwayWorkspace.h"
#include "tests/support/desktop/EditorUser.h"

namespace quorvi::test {
namespace {

class AtspiWorkspaceTest : public testing::Test, protected EditorUser {
protected:
    // Whether the bus tells of this process what sway tells of it, but for the number of its
    // window.
    bool agreesOn(pid_t pid) {
        return until(scheduler, [&] {
            const auto seen = workspace.frontmostApplication();
            const auto told = sway.frontmostApplication();
            return seen && told && seen->pid == pid && told->pid == pid && seen->name == told->name;
        });
    }

    LoopScheduler scheduler;
    SwayWorkspace sway{scheduler};
    AtspiWorkspace workspace{scheduler};
};

TEST_F(AtspiWorkspaceTest, FollowsTheActiveWindowAsTheCompositorDoes) {
    ASSERT_TRUE(openMousepad());
    EXPECT_TRUE(agreesOn(editor.pid()));
    EXPECT_EQ(workspace.frontmostClass(), "mousepad");
    // It was made after the editor got the focus.
    AtspiWorkspace late(scheduler);
    EXPECT_TRUE(until(scheduler, [&] {
        return late.frontmostApplication() == workspace.frontmostApplication();
    }));

    const Process other(gnomeTextEditor(folder.write("other.txt", "")));
    EXPECT_TRUE(agreesOn(other.pid()));
    {
        // Not on the bus: then the editor must not seem to have the focus.
        const Process terminal({"foot"});
        EXPECT_TRUE(until(scheduler, [&] {
            const auto told = sway.frontmostApplication();
            return told && told->pid == terminal.pid() && !workspace.frontmostApplication();
        }));
    }
    EXPECT_TRUE(agreesOn(other.pid()));
    for (const auto* one : {&std::as_const(editor), &other}) {
        shell("swaymsg '[pid=" + std::to_string(one->pid()) + "] focus'");
        EXPECT_TRUE(agreesOn(one->pid()));
    }
}

}  // namespace
}  // namespace quorvi::test
