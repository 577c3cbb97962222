// What `cmake --install` puts onto a machine, started from there as a desktop starts it.

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

// Installed where this session's desktop looks for what is the user's own.
class InstalledProgram : public testing::Test {
protected:
    static void SetUpTestSuite() {
        prefix = fs::path(std::getenv("XDG_DATA_HOME")).parent_path();
        outputOf({"cmake", "--install", fs::path(builtProgram("..")), "--prefix", prefix});
    }
    static inline fs::path prefix;
};

TEST_F(InstalledProgram, IsWhatTheLauncherAndTheBusStart) {
    const auto share = prefix / "share";
    const auto entry = share / "applications/app.quorvi.Quorvi.desktop";
    EXPECT_EQ(shell("desktop-file-validate " + entry.string()), "");
    const auto text = contentOf(entry);
    for (const std::string& line : {"Exec=" + (prefix / "bin/quorvi").string() + " show\n",
                                    "TryExec=" + (prefix / "bin/quorvi").string() + "\n",
                                    std::string("Icon=app.quorvi.Quorvi\n")})
        EXPECT_NE(text.find("\n" + line), text.npos) << text;
    EXPECT_TRUE(fs::exists(share / "icons/hicolor/scalable/apps/app.quorvi.Quorvi.svg"));

    shell(
        "gdbus call --session -d org.freedesktop.DBus -o / -m org.freedesktop.DBus.ReloadConfig; "
        "dbus-update-activation-environment DISPLAY XDG_RUNTIME_DIR QT_QPA_PLATFORM");
    // The bus starts it, and the first run shows the window.
    shell(
        "gdbus call --session -d app.quorvi.Quorvi -o /app/quorvi/Quorvi -m "
        "org.freedesktop.Application.Activate '{}'");
    const auto running = [] {
        return shell("for p in /proc/[0-9]*/exe; do readlink $p; done | grep -x '" +
                     (prefix / "bin/quorvi").string() + "'");
    };
    EXPECT_TRUE(
        eventually([&] { return shell("xdotool search --onlyvisible --name '^Quorvi$'") != ""; }));
    EXPECT_NE(running(), "");
    shell((prefix / "bin/quorvi").string() + " quit");
    EXPECT_TRUE(eventually([&] { return running().empty(); }));
}

// Two whole dictations; the helper that keeps the clipboard when Quorvi quits is found.
TEST_F(InstalledProgram, DictatesAndLeavesTheClipboardBehind) {
    Process demo({builtProgram("quorvi-demo"), prefix / "bin", fs::temp_directory_path() / "demo"});
    const auto told = demo.readAll();
    EXPECT_EQ(demo.wait(), 0) << told;
}

}  // namespace
}  // namespace quorvi::test
