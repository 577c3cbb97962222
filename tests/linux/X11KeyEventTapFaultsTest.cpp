#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/support/KeyWindow.h"
#include "tests/support/Process.h"
#include "tests/support/TapRecorder.h"

namespace quorvi::test {
namespace {

using Type = TapEventType;
constexpr KeyCode codeA = 0, codeF8 = 100;

TEST(X11KeyEventTap, SurvivesTheServersEndAndIsRevivedOnAnother) {
    const std::string original = std::getenv("DISPLAY");
    {
        TapRecorder recorder;
        NestedServer first;
        ASSERT_FALSE(first.display().empty());
        setenv("DISPLAY", first.display().c_str(), 1);
        ASSERT_TRUE(recorder.install());
        first.kill();
        ASSERT_TRUE(recorder.waitForEvents(1));
        EXPECT_EQ(recorder.events[0].type, Type::tapDisabledByUserInput);
        EXPECT_FALSE(recorder.tap.isValid());
        EXPECT_FALSE(recorder.tap.isEnabled());
        EXPECT_FALSE(recorder.install());

        NestedServer second;
        setenv("DISPLAY", second.display().c_str(), 1);
        ASSERT_TRUE(recorder.install());
        EXPECT_TRUE(recorder.tap.isEnabled());
        TestUser user(second.display());
        user.tap(key::a);
        EXPECT_TRUE(recorder.waitForType(Type::keyUp, codeA));
    }
    unsetenv("DISPLAY");
    TapRecorder without;
    EXPECT_FALSE(without.install());
    setenv("DISPLAY", original.c_str(), 1);
}

TEST(X11KeyEventTap, KillingTheProcessThatHoldsAKeyLeavesTheKeyboardUsable) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    KeyWindow window;
    ASSERT_TRUE(window.show());
    const auto child = fork();
    if (child == 0) {
        TapRecorder recorder;
        const bool installed = recorder.install();
        recorder.tap.setSwallowed({{codeF8, 0}});
        const auto say = [&](bool yes) { return write(ready[1], yes ? "y" : "n", 1) == 1; };
        bool told = say(installed && recorder.settle());
        told = told && say(recorder.waitForType(Type::keyDown, codeF8));
        recorder.scheduler.runFor(std::chrono::minutes(5));
        _exit(told ? 0 : 1);
    }
    const auto hear = [&] {
        char answer = 0;
        return read(ready[0], &answer, 1) == 1 && answer == 'y';
    };
    TestUser user;
    ASSERT_TRUE(hear());
    window.forget();
    user.press(key::f8);
    ASSERT_TRUE(hear());
    EXPECT_TRUE(window.keys().empty());
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    user.type({key::a, key::s});
    EXPECT_TRUE(window.waitForKey({key::s, false}));
    user.release(key::f8);
    user.tap(key::f8);
    EXPECT_TRUE(window.waitForKey({key::f8, true}));
    close(ready[0]);
    close(ready[1]);
}

}  // namespace
}  // namespace quorvi::test
