#include "Quorvi/system/LaunchAtLoginController.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeLoginItem.h"
#include "tests/fakes/VirtualScheduler.h"

namespace quorvi::test {
namespace {

using Status = LoginItemStatus;
using Steps = std::vector<std::string>;

struct LaunchAtLogin : testing::Test {
    void set(bool on) {
        service.journal.clear();
        controller.setEnabled(on);
        scheduler.settle();
    }

    VirtualScheduler scheduler;
    TurnExecutor executor{scheduler};
    FakeLoginItem service;
    LaunchAtLoginController controller{service, executor, scheduler};
};

TEST_F(LaunchAtLogin, SaysHowItStandsAndDoesOnlyWhatChangesThat) {
    struct Row {
        Status status;
        bool isEnabled, requiresApproval;
        const char* message;
        Steps switchingOn, switchingOff;
    };
    EXPECT_EQ(controller.message(), "") << "not known yet";
    for (const auto& row :
         {Row{Status::notRegistered,
              false,
              false,
              "Quorvi will stay closed when you sign in.",
              {"register"},
              {}},
          Row{Status::enabled,
              true,
              false,
              "Quorvi will start quietly in the menu bar when you sign in.",
              {},
              {"unregister"}},
          Row{Status::requiresApproval,
              false,
              true,
              "Allow Quorvi in System Settings → General → Login Items.",
              {"settings"},
              {"unregister"}},
          Row{Status::notFound,
              false,
              false,
              "Launch at login is available after Quorvi is installed in Applications.",
              {"register"},
              {"unregister"}},
          Row{Status::unknown,
              false,
              false,
              "Launch-at-login status is unavailable.",
              {"register"},
              {"unregister"}}}) {
        service.current = row.status;
        controller.refresh();
        scheduler.settle();
        EXPECT_EQ(controller.isEnabled(), row.isEnabled) << row.message;
        EXPECT_EQ(controller.requiresApproval(), row.requiresApproval) << row.message;
        EXPECT_EQ(controller.message(), row.message);
        set(true);
        EXPECT_EQ(service.journal, row.switchingOn) << row.message;
        service.current = row.status;
        set(false);
        EXPECT_EQ(service.journal, row.switchingOff) << row.message;
    }
}

TEST_F(LaunchAtLogin, AnErrorsOwnWordsStandInThePlaceOfTheStatus) {
    service.refusal = "No space left on device";
    set(true);
    EXPECT_FALSE(controller.isEnabled());
    EXPECT_EQ(controller.message(), "No space left on device");
    service.current = Status::enabled;
    set(false);
    EXPECT_TRUE(controller.isEnabled());
    EXPECT_EQ(controller.message(), "No space left on device");
    controller.openLoginItems();
    scheduler.settle();
    EXPECT_EQ(service.journal.back(), "settings");
    EXPECT_EQ(controller.message(), "No space left on device");
    controller.refresh();
    scheduler.settle();
    EXPECT_EQ(controller.message(), "Quorvi will start quietly in the menu bar when you sign in.");
}

TEST_F(LaunchAtLogin, TwoQuickChangesOfMindEndInTheLastOne) {
    controller.setEnabled(true);
    controller.setEnabled(false);
    scheduler.settle();
    EXPECT_EQ(service.journal, (Steps{"register", "unregister"}));
    EXPECT_FALSE(controller.isEnabled());
}

}  // namespace
}  // namespace quorvi::test
