// quorvi --cloud-release-check as it is started from a command line.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/LoopScheduler.h"
#include "Quorvi/platform/linux/PosixFileStore.h"
#include "Quorvi/platform/linux/PropertyListPreferences.h"
#include "Quorvi/platform/linux/SerialExecutor.h"
#include "tests/support/Process.h"

namespace quorvi::test {
namespace {

constexpr auto passed =
    "Cloud check passed: signed account access, private-zone write/read and cleanup.\n";

// The program on a computer without a display.
Process check(const std::filesystem::path& home) {
    return Process({QUORVI_PROGRAM, "--cloud-release-check"},
                   {"HOME=" + home.string(), "DISPLAY", "WAYLAND_DISPLAY"});
}

TEST(CloudCheckProgram, ChecksTheFolderThatThePreferencesName) {
    const TestFolder home;
    // Two at once, of one user and therefore in one folder.
    auto one = check(home.path()), two = check(home.path());
    EXPECT_EQ(one.readAll(), passed);
    EXPECT_EQ(two.readAll(), passed);
    EXPECT_EQ(one.wait(), 0);
    EXPECT_EQ(two.wait(), 0);
    const auto standard = home.path() / ".local/share/Quorvi/cloud";
    EXPECT_TRUE(std::filesystem::is_directory(standard));

    const auto prefer = [&](const std::string& address) {
        LoopScheduler loop;
        PosixFileStore files;
        SerialExecutor disk("disk");
        PropertyListPreferences preferences(files, home.path() / ".config/Quorvi/preferences.plist",
                                            disk, loop);
        preferences.setString("cloudDatabase", address);
        preferences.flush();
    };
    const auto elsewhere = home.path() / "Sync ü";
    prefer("folder:" + elsewhere.string());
    auto three = check(home.path());
    EXPECT_EQ(three.readAll(), passed);
    EXPECT_EQ(three.wait(), 0);
    EXPECT_TRUE(std::filesystem::is_directory(elsewhere));

    for (const std::string address : {"folder:relative", "gopher://cloud"}) {
        prefer(address);
        auto misled = check(home.path());
        const auto said = misled.readAll();
        EXPECT_TRUE(said.starts_with("Cloud check failed: cloudDatabase: " + address)) << said;
        EXPECT_EQ(misled.wait(), 1);
    }
    prefer("folder:" + elsewhere.string());
    std::filesystem::rename(elsewhere, home.path() / "unmounted");
    auto offline = check(home.path());
    const auto said = offline.readAll();
    EXPECT_TRUE(said.starts_with("Cloud check failed: The folder ")) << said;
    EXPECT_EQ(offline.wait(), 1);
}

}  // namespace
}  // namespace quorvi::test
