#include <gtest/gtest.h>

#include <string>

#include "Quorvi/platform/linux/kde/KGlobalAccelShortcuts.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/QuorviProgram.h"
#include "tests/support/desktop/TestUser.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;
using enum ShortcutSource::Change;

constexpr SwallowedKey f8{100, 0}, escape{keyCode::escape, 0};
constexpr auto unused = "(@as [],)\n";

// On the real service.
class KdeShortcut : public testing::Test {
protected:
    void start() {
        shortcuts.emplace(scheduler, "", "");
        shortcuts->start(
            [this](const SwallowedKey& key, auto change) {
                told += (key == escape ? "escape" : "key") +
                        std::string(change == pressed ? "-down " : "-up ");
            },
            [] {});
        shortcuts->bind({f8});
    }
    // What is told until the input has been quiet for a while.
    std::string heard() {
        scheduler.runFor(300ms);
        return std::exchange(told, {});
    }
    static std::string useOfF8() { return call("action 16777271"); }
    bool waitFor(const std::function<bool()>& condition) {
        return scheduler.runUntil(condition, 20s);
    }
    static std::string call(const std::string& what) {
        return shell(
            "gdbus call --session -d org.kde.kglobalaccel -o /kglobalaccel "
            "-m org.kde.KGlobalAccel." +
            what);
    }

    LoopScheduler scheduler;
    TestUser user;
    std::string told;
    std::optional<KGlobalAccelShortcuts> shortcuts;
};

TEST_F(KdeShortcut, IsHeldOnceAndCancelledBeforeItsRelease) {
    start();
    ASSERT_TRUE(waitFor([&] { return shortcuts->isBound(); }));
    user.press(key::f8);
    scheduler.runFor(1200ms);  // it repeats
    user.release(key::f8);
    EXPECT_EQ(heard(), "key-down key-up ");
    for (int twice = 0; twice < 2; ++twice) {
        shortcuts->bind({f8, escape});
        heard();
        user.press(key::f8);
        user.tap(key::escape);
        user.release(key::f8);
        const auto all = heard();
        EXPECT_TRUE(all.starts_with("key-down escape-down ")) << all;
        EXPECT_EQ(all.find("key-up"), all.rfind("key-up")) << all;
        shortcuts->bind({f8});
        heard();
        user.tap(key::escape);
        EXPECT_EQ(heard(), "");
    }
    shortcuts.reset();
    EXPECT_EQ(useOfF8(), unused);
    EXPECT_TRUE(eventually([] { return call("getComponent app.quorvi.Quorvi").empty(); }));
}

TEST_F(KdeShortcut, LeavesTheKeysOfOthersUntilTheyAreFree) {
    call(R"(doRegister "['other','x','Other','Do X']")");
    call(R"(setShortcut "['other','x','Other','Do X']" '[16777271]' 6)");
    start();
    ASSERT_TRUE(waitFor([&] { return shortcuts->takenBy() == "Other: Do X"; }));
    EXPECT_FALSE(shortcuts->isBound());
    EXPECT_EQ(kdeUseOf(f8), "Other: Do X");
    call("unregister other x");
    shortcuts->bind({f8});
    EXPECT_TRUE(waitFor([&] { return shortcuts->isBound(); }));
    // The user gives the action other keys in the desktop's settings.
    call(R"(setForeignShortcut "['app.quorvi.Quorvi','dictate','','']" '[16777270]')");
    EXPECT_TRUE(waitFor([&] { return !shortcuts->isBound(); }));
}

TEST_F(KdeShortcut, IsFreeAgainWhenTheProgramIsKilled) {
    QuorviProgram program;
    // KDE 6's look brings threads of the lowest priority, which a busy machine lets end late.
    program.start({"QUORVI_API_KEY=key", "XDG_CURRENT_DESKTOP=none"}, {"--shortcut", "f8"});
    ASSERT_TRUE(eventually([] { return useOfF8() != unused; }));
    program.crash();
    EXPECT_TRUE(eventually([] { return useOfF8() == unused; }));
}

}  // namespace
}  // namespace quorvi::test
