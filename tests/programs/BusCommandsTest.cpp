// The program as a desktop's launcher, key bindings, scripts and a second copy meet it: over the
// session bus and on the command line.

#include <gtest/gtest.h>

#include "tests/desktop/ProgramDesk.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/FakeService.h"

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
    return !shell("xdotool search --onlyvisible --name '^Quorvi$'").empty();
}

TEST(BusCommands, DriveTheRunningProgram) {
    EXPECT_EQ(quorvi("status").output, "quorvi: Quorvi is not running.\n");
    EXPECT_EQ(quorvi("start").status, 1);
    QuorviProgram program;  // with a key, so that no window welcomes the user
    program.start({"QUORVI_API_KEY=sk-test", "QUORVI_SERVICE=http://127.0.0.1:9"});
    EXPECT_TRUE(eventually([] { return quorvi("status").output.ends_with("ready\n"); }));
    EXPECT_TRUE(quorvi("status").output.starts_with("idle\n"));
    EXPECT_EQ(quorvi("status --mode hold").status, 2);

    // Without a field to dictate into, which is said as after a press of the shortcut.
    EXPECT_EQ(quorvi("toggle").status, 0);
    EXPECT_TRUE(eventually([] { return !quorvi("status").output.starts_with("idle\n"); }));
    EXPECT_EQ(quorvi("cancel").status, 0);

    EXPECT_FALSE(windowIsShown());
    shell(
        "gdbus call --session -d app.quorvi.Quorvi -o /app/quorvi/Quorvi -m "
        "org.freedesktop.Application.Activate '{}'");
    EXPECT_TRUE(eventually(windowIsShown));

    EXPECT_EQ(quorvi("quit").status, 0);
    EXPECT_EQ(program.wait(), 0);
    EXPECT_EQ(quorvi("quit").status, 1);
}

TEST(BusCommands, DoctorSaysWhatIsWrongAndWhatToDo) {
    for (const auto& [environment, lines] :
         {std::pair("QUORVI_SERVICE=http://127.0.0.1:9",
                    std::vector{"✓ Global shortcut: ", "✓ Accessibility: ", "✓ Sound server: ",
                                "✓ Microphone: ", "– Tray: ", "✗ Keyring: ",
                                "✗ Speech service: http://127.0.0.1:9: "}),
          {"-u DISPLAY PULSE_SERVER=unix:/nowhere QUORVI_SERVICE=ftp://x",
           {"✗ Global shortcut: no X11 display.", "✗ Sound server: ", "✗ Speech service: "}}}) {
        const auto said = quorvi("doctor", environment);
        EXPECT_EQ(said.status, 1);
        for (const auto* line : lines)
            EXPECT_NE(said.output.find(line), std::string::npos) << line << "\n" << said.output;
    }
}

TEST(TwoPrograms, TheSecondLeavesAtOnceAndTheFirstAsItIs) {
    const auto home = std::make_shared<TestFolder>();
    QuorviProgram first(home);
    first.start();
    // The machines that have written into the shared folder.
    const auto machines = [&] {
        return std::distance(fs::directory_iterator(first.dataFolder() / "cloud"), {});
    };
    ASSERT_TRUE(eventually([&] {
        return contentOf(first.dataFolder() / "account-sync.json").find("lastSynced") !=
               std::string::npos;
    }));
    const auto history = first.historyText();
    for (const bool isElsewhere : {false, true}) {
        QuorviProgram second(home);
        isElsewhere ? second.startElsewhere() : second.start();
        EXPECT_EQ(second.rest(), "");
        EXPECT_EQ(second.wait(), 0);
    }
    EXPECT_EQ(first.historyText(), history);

    // A crash leaves nothing behind that keeps the next one out, on this computer or the other.
    first.crash();
    for (const bool isElsewhere : {false, true}) {
        QuorviProgram next(home);
        isElsewhere ? next.startElsewhere() : next.start();
        EXPECT_NE(next.until("|"), "");
        next.crash();
    }
    EXPECT_EQ(machines(), 1);
}

// What `cmake --install` puts where this session's desktop looks for what is the user's own.
TEST(InstalledProgram, IsStartedByTheBusAndDictates) {
    const auto prefix = fs::path(std::getenv("XDG_DATA_HOME")).parent_path();
    outputOf({"cmake", "--install", fs::path(builtProgram("..")), "--prefix", prefix});
    const auto program = (prefix / "bin/quorvi").string();
    const auto entry = prefix / "share/applications/app.quorvi.Quorvi.desktop";
    EXPECT_EQ(shell("desktop-file-validate " + entry.string()), "");
    EXPECT_NE(contentOf(entry).find("\nExec=" + program + " show\n"), std::string::npos);

    shell(
        "gdbus call --session -d org.freedesktop.DBus -o / -m org.freedesktop.DBus.ReloadConfig; "
        "dbus-update-activation-environment DISPLAY XDG_RUNTIME_DIR QT_QPA_PLATFORM");
    EXPECT_EQ(quorvi("status").status, 1) << "a question starts nothing";
    EXPECT_EQ(quorvi("show").status, 0);
    EXPECT_TRUE(eventually(windowIsShown));
    const auto running = [&] {
        return shell("readlink /proc/[0-9]*/exe | grep -x '" + program + "'");
    };
    EXPECT_NE(running(), "");
    EXPECT_EQ(quorvi("quit").status, 0);
    EXPECT_TRUE(eventually([&] { return running().empty(); }));

    // Two whole dictations; the helper that keeps the clipboard when Quorvi quits is found.
    Process demo({builtProgram("quorvi-demo"), prefix / "bin", fs::temp_directory_path() / "demo"});
    const auto told = demo.readAll();
    EXPECT_EQ(demo.wait(), 0) << told;
}

// Somebody who dictates when the screen is locked.
class LockedScreen : public ProgramDesk {
protected:
    static bool indicatorIsShown() {
        return !shell("xdotool search --onlyvisible --name '^Quorvi dictation$'").empty();
    }
    // An unlinked recording is known by its descriptor only.
    bool isRecording() const {
        for (const auto& each :
             fs::directory_iterator("/proc/" + std::to_string(program.pid()) + "/fd")) {
            std::error_code gone;
            if (fs::read_symlink(each.path(), gone).string().find("VeskRecordings") !=
                std::string::npos)
                return true;
        }
        return false;
    }

    const FakeSystemBus bus;
};

TEST_F(LockedScreen, CancelsTheDictation) {
    const FakeService logind(FakeService::systemBus, "org.freedesktop.login1",
                             {{"auto", "(objectpath '/session/own',)"}});
    const FakeService saver(FakeService::sessionBus, "org.gnome.ScreenSaver");
    const std::function<void()> locks[] = {
        [&] { logind.emit("/session/own", "org.freedesktop.login1.Session", "Lock", "()"); },
        [&] {
            saver.emit("/org/gnome/ScreenSaver", "org.gnome.ScreenSaver", "ActiveChanged",
                       "(true,)");
        }};
    startQuorvi();
    program.until("| ready");
    for (const auto& lock : locks) {
        user.press(key::f8);
        program.until("Listening");
        hold();
        EXPECT_TRUE(eventually(indicatorIsShown));
        EXPECT_TRUE(isRecording());
        // It connects to the buses in the background.
        EXPECT_TRUE(eventually([&] {
            lock();
            return !indicatorIsShown();
        }));
        program.until("Cancelled");
        EXPECT_TRUE(eventually([this] { return !isRecording(); }));
        user.release(key::f8);
    }
    EXPECT_EQ(recordingsLeft(), 0);
    EXPECT_EQ(fieldText(), "");
}

}  // namespace
}  // namespace quorvi::test
