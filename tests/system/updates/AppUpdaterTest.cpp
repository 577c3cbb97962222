#include "Quorvi/system/updates/AppUpdater.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Quorvi/system/MemoryPreferences.h"
#include "tests/fakes/FakeDownloader.h"
#include "tests/fakes/FakeUpdateInstaller.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/Feeds.h"
#include "tests/support/TestFolder.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

class AppUpdaterModelTest : public testing::Test {
protected:
    AppUpdaterModelTest() { offer("2.0"); }

    void offer(const std::string& version) {
        downloader.body =
            feed(FeedItem{.version = version, .more = "<description>News</description>"});
    }
    AppUpdater& start() {
        updater = std::make_unique<AppUpdater>(UpdateEnvironment{
            scheduler, executor, preferences, downloader, installer, configuration});
        updater->showWindow = [this] { ++windows; };
        return *updater;
    }
    std::size_t checks() const { return downloader.fetched.size(); }

    VirtualScheduler scheduler;
    TurnExecutor executor{scheduler};
    MemoryPreferences preferences;
    FakeDownloader downloader{scheduler};
    FakeUpdateInstaller installer;
    const TestFolder folder;
    UpdateConfiguration configuration{"https://a/feed",
                                      "PUAXw+hDiVqStwqnTRt+vJyYLM8uxJaMwM1V8Sr0Zgw=",
                                      "1.0",
                                      "12",
                                      "quorvi",
                                      folder.path() / "updates"};
    int windows = 0;
    std::unique_ptr<AppUpdater> updater;
};

TEST_F(AppUpdaterModelTest, ChecksOnceADayAndAnHourAfterAFailure) {
    preferences.setInteger("lastUpdateCheck", 4'000'000'000);  // a future date counts as none
    downloader.failure = say::serverTimedOut(Sentence::updateServer);
    start();
    EXPECT_TRUE(updater->automaticChecks());
    scheduler.advance(30s);
    EXPECT_EQ(checks(), 0u) << "not during the start";
    scheduler.advance(90s);
    EXPECT_EQ(checks(), 1u);
    EXPECT_EQ(updater->stage(), UpdateStage::idle) << "a failure is not shown";
    downloader.failure.reset();
    scheduler.advance(1h);
    EXPECT_EQ(checks(), 2u);
    EXPECT_EQ(updater->availableVersion(), "2.0");
    start();
    scheduler.advance(23h);
    EXPECT_EQ(checks(), 2u) << "a restart does not count";
    scheduler.advance(2h);
    EXPECT_EQ(checks(), 3u);
    scheduler.advance(24h * 9 + 1h);
    EXPECT_GE(checks(), 11u);
    EXPECT_LE(checks(), 13u);
    EXPECT_EQ(windows, 0);
}

TEST_F(AppUpdaterModelTest, ScheduledFindIsPublishedWithoutAWindowUntilTheUserActs) {
    start();
    int told = 0;
    const auto watching = updater->onChange([&] { ++told; });
    scheduler.advance(2min);
    EXPECT_EQ(updater->availableVersion(), "2.0");
    EXPECT_EQ(told, 1);
    EXPECT_EQ(windows, 0);
    EXPECT_EQ(updater->stage(), UpdateStage::idle);

    updater->check();
    scheduler.advance(5s);
    EXPECT_EQ(windows, 1);
    EXPECT_EQ(updater->stage(), UpdateStage::available);
    EXPECT_EQ(updater->availableVersion(), "2.0") << "seen, but not acted upon";
    updater->check();
    EXPECT_EQ(windows, 2);
    EXPECT_EQ(checks(), 2u) << "an open window is only brought to the front";
    updater->download();
    EXPECT_EQ(updater->availableVersion(), std::nullopt);
    updater->close();

    scheduler.advance(25h);
    EXPECT_EQ(updater->availableVersion(), "2.0");
    offer("1.0");
    scheduler.advance(25h);
    EXPECT_EQ(updater->availableVersion(), std::nullopt) << "the release was withdrawn";
}

TEST_F(AppUpdaterModelTest, AUsersCheckPublishesNothingAndReplacesTheScheduledOne) {
    downloader.answersAfter = 90s;
    start();
    scheduler.advance(90s);
    ASSERT_EQ(checks(), 1u);
    updater->check();  // while the scheduled one is under way
    scheduler.advance(10min);
    EXPECT_EQ(updater->stage(), UpdateStage::available);
    EXPECT_EQ(updater->availableVersion(), std::nullopt);
    scheduler.advance(48h);
    EXPECT_EQ(updater->availableVersion(), std::nullopt) << "published beside an open window";

    updater->close();
    updater->check();
    updater->close();  // before the answer
    scheduler.advance(10min);
    EXPECT_EQ(updater->stage(), UpdateStage::idle);
}

TEST_F(AppUpdaterModelTest, ASwitchThatIsOffStopsTheScheduledChecks) {
    start();
    updater->setAutomaticChecks(false);
    start();
    scheduler.advance(72h);
    EXPECT_EQ(checks(), 0u);
    preferences.setBoolean("automaticUpdateChecks", true);  // by another program
    scheduler.advance(2min);
    EXPECT_EQ(checks(), 1u);
}

}  // namespace
}  // namespace quorvi::test
