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

TEST_F(LaunchAtLogin, ShowsTheStatusAndDoesOnlyWhatChangesIt) {
    struct Row {
        Status status;
        Message message;
        Steps switchingOn, switchingOff;
    };
    EXPECT_TRUE(controller.message().isEmpty()) << "not known yet";
    const Row rows[] = {
        {Status::notRegistered, say::loginItemOff(), {"register"}, {}},
        {Status::enabled, say::loginItemOn(), {}, {"unregister"}},
        {Status::requiresApproval, say::loginItemNeedsApproval(), {"settings"}, {"unregister"}},
        {Status::notFound, say::loginItemNotInstalled(), {"register"}, {"unregister"}},
        {Status::unknown, say::loginItemUnknown(), {"register"}, {"unregister"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.message.english());
        service.current = row.status;
        controller.refresh();
        scheduler.settle();
        EXPECT_EQ(controller.isEnabled(), row.status == Status::enabled);
        EXPECT_EQ(controller.requiresApproval(), row.status == Status::requiresApproval);
        EXPECT_EQ(controller.message(), row.message);
        set(true);
        EXPECT_EQ(service.journal, row.switchingOn);
        service.current = row.status;
        set(false);
        EXPECT_EQ(service.journal, row.switchingOff);
    }
}

TEST_F(LaunchAtLogin, AnErrorIsShownUntilTheNextLook) {
    service.refusal = "No space left on device";
    set(true);
    EXPECT_FALSE(controller.isEnabled());
    controller.openLoginItems();
    scheduler.settle();
    EXPECT_EQ(service.journal.back(), "settings");
    EXPECT_EQ(controller.message().english(), "No space left on device");
    controller.refresh();
    scheduler.settle();
    EXPECT_EQ(controller.message(), say::loginItemOff());
}

}  // namespace
}  // namespace quorvi::test
