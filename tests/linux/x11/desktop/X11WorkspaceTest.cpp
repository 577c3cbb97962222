#include "Quorvi/platform/linux/x11/desktop/X11Workspace.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/FakeService.h"
#include "tests/support/desktop/KeyWindow.h"

namespace quorvi::test {
namespace {

class X11WorkspaceTest : public testing::Test {
protected:
    bool waitForFrontmost(const X11Workspace& workspace,
                          const std::optional<RunningApplication>& expected) {
        return until(scheduler, [&] { return workspace.frontmostApplication() == expected; });
    }

    LoopScheduler scheduler;
};

TEST_F(X11WorkspaceTest, FollowsTheActiveWindowFromProgramToProgram) {
    X11Workspace workspace(scheduler);
    EXPECT_EQ(workspace.ownPid(), getpid());
    ASSERT_TRUE(waitForFrontmost(workspace, std::nullopt));

    KeyWindow window("PlainProgram");
    ASSERT_TRUE(window.show());
    ASSERT_TRUE(waitForFrontmost(workspace, RunningApplication{getpid(), "PlainProgram"}));
    {
        const Process editor({"mousepad", "--disable-server"});
        ASSERT_TRUE(waitForFrontmost(workspace, RunningApplication{editor.pid(), "Mousepad"}));
        ASSERT_TRUE(window.focus());
        ASSERT_TRUE(waitForFrontmost(workspace, RunningApplication{getpid(), "PlainProgram"}));
    }
}

TEST_F(X11WorkspaceTest, TellsSleepAndWakeFromLogindAlone) {
    const FakeSystemBus bus;
    const FakeService logind(FakeService::systemBus, "org.freedesktop.login1");
    const FakeService impostor(FakeService::systemBus, "org.example.Impostor");
    X11Workspace workspace(scheduler);
    std::string heard;
    auto sleep = workspace.onWillSleep([&] { heard += 's'; });
    const auto wake = workspace.onDidWake([&] { heard += 'w'; });
    // The workspace subscribes in the background; an impostor's signals never count.
    ASSERT_TRUE(until(scheduler, [&] {
        impostor.prepareForSleep(false);
        logind.prepareForSleep(true);
        return !heard.empty();
    }));
    EXPECT_EQ(heard.find('w'), std::string::npos);
    logind.prepareForSleep(false);
    ASSERT_TRUE(until(scheduler, [&] { return heard.find('w') != std::string::npos; }));
    sleep = {};
    const auto before = std::count(heard.begin(), heard.end(), 's');
    logind.prepareForSleep(true);
    logind.prepareForSleep(false);
    ASSERT_TRUE(until(scheduler, [&] { return std::count(heard.begin(), heard.end(), 'w') == 2; }));
    EXPECT_EQ(std::count(heard.begin(), heard.end(), 's'), before);
}

TEST_F(X11WorkspaceTest, TellsThatItsOwnSessionIsLocked) {
    constexpr auto session = "org.freedesktop.login1.Session";
    const FakeSystemBus bus;
    setenv("XDG_SESSION_ID", "7", 1);
    for (const auto* id : {"auto", "7"}) {
        const FakeService logind(FakeService::systemBus, "org.freedesktop.login1",
                                 {{id, "(objectpath '/session/own',)"}});
        X11Workspace workspace(scheduler);
        int locks = 0;
        int wakes = 0;
        const auto lock = workspace.onScreenLock([&] { ++locks; });
        const auto wake = workspace.onDidWake([&] { ++wakes; });
        ASSERT_TRUE(until(scheduler, [&] {
            logind.emit("/session/own", session, "Lock", "()");
            return locks > 0;
        })) << id;
        for (const auto& [values, expected] : {std::pair("{'LockedHint': <false>}", 0),
                                               {"{'Active': <true>}", 0},
                                               {"{'LockedHint': <true>}", 1}}) {
            // The signals arrive in order, so waking means that all before have.
            for (const auto* path : {"", "/session/other", "/session/own"}) {
                if (*path) logind.changeProperties(path, session, values);
                const int before = wakes;
                logind.prepareForSleep(false);
                ASSERT_TRUE(until(scheduler, [&] { return wakes > before; }));
                if (!*path) locks = 0;
            }
            EXPECT_EQ(locks, expected) << values;
        }
    }
    unsetenv("XDG_SESSION_ID");
}

TEST_F(X11WorkspaceTest, TellsThatAScreenSaverCoversTheScreen) {
    for (const auto* name :
         {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver", "org.mate.ScreenSaver",
          "org.cinnamon.ScreenSaver", "org.xfce.ScreenSaver"}) {
        const FakeService saver(FakeService::sessionBus, name);
        X11Workspace workspace(scheduler);
        int locks = 0;
        const auto lock = workspace.onScreenLock([&] { ++locks; });
        EXPECT_TRUE(until(scheduler, [&] {
            saver.emit("/ScreenSaver", name, "ActiveChanged", "(true,)");
            return locks > 0;
        })) << name;
    }
}

}  // namespace
}  // namespace quorvi::test
