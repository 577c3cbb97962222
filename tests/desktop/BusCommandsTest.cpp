// The program as a desktop's launcher, key bindings and scripts meet it: over the session bus and
// on the command line.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

struct Outcome {
    int status;
    std::string output;
};

// A command of the program's, in this session and with this test's folders.
Outcome quorvi(const std::string& arguments, const std::string& environment = {}) {
    auto output = shell("env " + environment + " " + builtProgram("quorvi") + " " + arguments +
                        " 2>&1; echo =$?");
    const auto at = output.rfind('=');
    return {std::stoi(output.substr(at + 1)), output.substr(0, at)};
}

bool windowIsShown() {
    return shell("xdotool search --onlyvisible --name '^Quorvi$'").find_first_of("0123456789") !=
           std::string::npos;
}

class BusCommands : public testing::Test {
protected:
    // A user who has a key, so that no window welcomes them.
    static std::vector<std::string> settings() {
        return {"QUORVI_API_KEY=sk-test", "QUORVI_SERVICE=http://127.0.0.1:9"};
    }
    void start() {
        program = Process({builtProgram("quorvi"), "--print-stages"}, settings());
        ASSERT_TRUE(eventually([] { return quorvi("status").status == 0; }));
    }
    Process program;
};

TEST_F(BusCommands, DriveTheRunningProgram) {
    EXPECT_EQ(quorvi("status").output, "quorvi: Quorvi is not running.\n");
    EXPECT_EQ(quorvi("start").status, 1);
    start();
    const auto stage = [] {
        const auto status = quorvi("status").output;
        return status.substr(0, status.find('\n'));
    };
    EXPECT_TRUE(eventually([] { return quorvi("status").output.ends_with("ready\n"); }));
    EXPECT_EQ(stage(), "idle");
    EXPECT_EQ(quorvi("status --mode hold").status, 2);

    // Without a field to dictate into, which is said as after a press of the shortcut.
    EXPECT_EQ(quorvi("toggle").status, 0);
    EXPECT_TRUE(eventually([&] { return stage() != "idle"; })) << quorvi("status").output;
    EXPECT_EQ(quorvi("cancel").status, 0);

    // A second copy ends at once and leaves the first as it is; the launcher's activation and
    // `show` bring the window up.
    auto second = Process({builtProgram("quorvi")}, settings());
    EXPECT_EQ(second.wait(), 0);
    EXPECT_FALSE(windowIsShown());
    shell(
        "gdbus call --session -d app.quorvi.Quorvi -o /app/quorvi/Quorvi -m "
        "org.freedesktop.Application.Activate '{}'");
    EXPECT_TRUE(eventually(windowIsShown));

    EXPECT_EQ(quorvi("quit").status, 0);
    EXPECT_EQ(program.wait(), 0);
    EXPECT_EQ(quorvi("quit").status, 1);
}

TEST_F(BusCommands, LauncherStartsWhatIsNotRunning) {
    const fs::path services = fs::path(std::getenv("XDG_DATA_HOME")) / "dbus-1/services";
    fs::create_directories(services);
    std::ofstream(services / "app.quorvi.Quorvi.service")
        << "[D-BUS Service]\nName=app.quorvi.Quorvi\nExec=" + builtProgram("quorvi") + "\n";
    shell(
        "gdbus call --session -d org.freedesktop.DBus -o / -m org.freedesktop.DBus.ReloadConfig; "
        "dbus-update-activation-environment DISPLAY XDG_RUNTIME_DIR QT_QPA_PLATFORM");
    EXPECT_EQ(quorvi("status").status, 1) << "a question starts nothing";
    EXPECT_EQ(quorvi("show").status, 0);
    EXPECT_TRUE(eventually(windowIsShown));
    EXPECT_EQ(quorvi("quit").status, 0);
    fs::remove(services / "app.quorvi.Quorvi.service");
}

TEST_F(BusCommands, DoctorSaysWhatIsWrongAndWhatToDo) {
    const auto here = quorvi("doctor", "QUORVI_SERVICE=http://127.0.0.1:9");
    EXPECT_EQ(here.status, 1) << here.output;
    for (const auto* line :
         {"✓ Global shortcut: ", "✓ Accessibility: ", "✓ Sound server: ", "✓ Microphone: ",
          "– Tray: ", "✗ Keyring: ", "✗ Speech service: http://127.0.0.1:9: "})
        EXPECT_NE(here.output.find(line), std::string::npos) << line << "\n" << here.output;
    const auto elsewhere =
        quorvi("doctor", "-u DISPLAY PULSE_SERVER=unix:/nowhere QUORVI_SERVICE=ftp://x");
    EXPECT_EQ(elsewhere.status, 1);
    for (const auto* line :
         {"✗ Global shortcut: no X11 display.", "✗ Sound server: ", "✗ Speech service: "})
        EXPECT_NE(elsewhere.output.find(line), std::string::npos) << line << "\n"
                                                                  << elsewhere.output;
}

}  // namespace
}  // namespace quorvi::test
