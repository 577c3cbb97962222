#include "Quorvi/platform/linux/x11/desktop/X11Workspace.h"

#include <gio/gio.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"
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

// A bus of the test's own in the system bus's place, where anybody may own logind's name.
class FakeSystemBus {
public:
    FakeSystemBus() {
        const auto address = "unix:path=" + (folder_.path() / "socket").string();
        const auto config = folder_.write(
            "bus.conf", "<busconfig><type>system</type><listen>" + address +
                            "</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
                            "<allow receive_sender=\"*\"/><allow own=\"*\"/><allow user=\"*\"/>"
                            "</policy></busconfig>\n");
        daemon_ = Process({"dbus-daemon", "--nofork", "--nopidfile", "--config-file=" + config});
        eventually([&] { return std::filesystem::exists(folder_.path() / "socket"); });
        setenv("DBUS_SYSTEM_BUS_ADDRESS", address.c_str(), 1);
    }
    ~FakeSystemBus() { unsetenv("DBUS_SYSTEM_BUS_ADDRESS"); }

    // Emits the signal as the owner of `name`.
    static void emit(const std::string& name, bool sleeping) {
        auto* bus = g_dbus_connection_new_for_address_sync(
            std::getenv("DBUS_SYSTEM_BUS_ADDRESS"),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr);
        ASSERT_NE(bus, nullptr);
        auto* owned = g_dbus_connection_call_sync(
            bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "RequestName", g_variant_new("(su)", name.c_str(), 0U), nullptr, G_DBUS_CALL_FLAGS_NONE,
            -1, nullptr, nullptr);
        ASSERT_NE(owned, nullptr);
        g_variant_unref(owned);
        EXPECT_TRUE(g_dbus_connection_emit_signal(
            bus, nullptr, "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
            "PrepareForSleep", g_variant_new("(b)", sleeping ? TRUE : FALSE), nullptr));
        g_dbus_connection_flush_sync(bus, nullptr, nullptr);
        g_dbus_connection_close_sync(bus, nullptr, nullptr);
        g_object_unref(bus);
    }

private:
    TestFolder folder_;
    Process daemon_;
};

TEST_F(X11WorkspaceTest, TellsSleepAndWakeFromLogindAlone) {
    const FakeSystemBus bus;
    X11Workspace workspace(scheduler);
    std::string heard;
    auto sleep = workspace.onWillSleep([&] { heard += 's'; });
    const auto wake = workspace.onDidWake([&] { heard += 'w'; });
    // The workspace subscribes in the background; an impostor's signals never count.
    ASSERT_TRUE(until(scheduler, [&] {
        FakeSystemBus::emit("org.example.Impostor", false);
        FakeSystemBus::emit("org.freedesktop.login1", true);
        return !heard.empty();
    }));
    EXPECT_EQ(heard.find('w'), std::string::npos);
    FakeSystemBus::emit("org.freedesktop.login1", false);
    ASSERT_TRUE(until(scheduler, [&] { return heard.find('w') != std::string::npos; }));
    sleep = {};
    const auto before = std::count(heard.begin(), heard.end(), 's');
    FakeSystemBus::emit("org.freedesktop.login1", true);
    FakeSystemBus::emit("org.freedesktop.login1", false);
    ASSERT_TRUE(until(scheduler, [&] { return std::count(heard.begin(), heard.end(), 'w') == 2; }));
    EXPECT_EQ(std::count(heard.begin(), heard.end(), 's'), before);
}

}  // namespace
}  // namespace quorvi::test
