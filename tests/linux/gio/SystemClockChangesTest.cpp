#include "Quorvi/platform/linux/gio/SystemClockChanges.h"

#include <gtest/gtest.h>

#include <optional>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/FakeService.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

class SystemClockChangesTest : public testing::Test {
protected:
    SystemClockChangesTest() { chooseZone("Etc/UTC"); }

    // As `timedatectl set-timezone` does.
    void chooseZone(const std::string& name) const {
        fs::create_symlink("/usr/share/zoneinfo/" + name, folder.path() / "new");
        fs::rename(folder.path() / "new", zone);
    }
    void follow() {
        changes = 0;
        clock.emplace(scheduler, zone);
        subscription = clock->onChange([this] { ++changes; });
    }
    bool isTold() {
        return until(scheduler, [this] { return changes > 0; });
    }
    // What the kernel says about this process's descriptors.
    static bool isArmed(const std::string& line) {
        return eventually([&] {
            for (const auto& each : fs::directory_iterator("/proc/self/fdinfo"))
                if (contentOf(each.path()).find(line) != std::string::npos) return true;
            return false;
        });
    }

    const FakeSystemBus bus;
    const TestFolder folder;
    const fs::path zone = folder.path() / "localtime";
    LoopScheduler scheduler;
    int changes = 0;
    std::optional<SystemClockChanges> clock;
    Subscription subscription;
};

// The clock of the machine can't be set by a test; but the kernel says what it would report.
TEST_F(SystemClockChangesTest, TellsThatTheClockWasSetOrTheZonesFileReplaced) {
    follow();
    EXPECT_TRUE(isArmed("clockid: 0\nticks: 0\nsettime flags: 03\n"));
    ASSERT_TRUE(isArmed("inotify wd:"));
    const auto other = folder.write("other", "file of the folder");
    chooseZone("Europe/Athens");
    ASSERT_TRUE(isTold());
    EXPECT_EQ(changes, 1);
}

TEST_F(SystemClockChangesTest, TellsWhatTimedatedAndLogindSay) {
    const FakeService logind(FakeService::systemBus, "org.freedesktop.login1");
    const FakeService timedated(FakeService::systemBus, "org.freedesktop.timedate1");
    const std::function<void()> news[] = {
        [&] {
            timedated.changeProperties("/org/freedesktop/timedate1", "org.freedesktop.timedate1",
                                       "{'Timezone': <'Europe/Athens'>}");
        },
        [&] {
            timedated.emit("/org/freedesktop/timedate1", "org.freedesktop.DBus.Properties",
                           "PropertiesChanged",
                           "('org.freedesktop.timedate1', @a{sv} {}, ['Timezone'])");
        },
        [&] { logind.prepareForSleep(false); }};
    for (const auto& tell : news) {
        follow();
        // It subscribes in the background.
        ASSERT_TRUE(until(scheduler, [&] {
            tell();
            return changes > 0;
        }));
    }
}

}  // namespace
}  // namespace quorvi::test
