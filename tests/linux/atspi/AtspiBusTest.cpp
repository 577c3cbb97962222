#include <gtest/gtest.h>
#include <signal.h>

#include <atomic>
#include <string>

#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"

namespace quorvi::test {
namespace {

// The process that provides the accessibility bus; 0 while there is none.
pid_t launcherPid() {
    const auto answer = shell(
        "gdbus call --session -d org.freedesktop.DBus -o /org/freedesktop/DBus "
        "-m org.freedesktop.DBus.GetConnectionUnixProcessID org.a11y.Bus 2>/dev/null");
    const auto digits = answer.find_first_of("0123456789", answer.find("uint32") + 6);
    return digits == std::string::npos ? 0 : std::stoi(answer.substr(digits));
}

TEST(AtspiBus, TrustFollowsTheDesktopsSwitchTheHookAndTheBus) {
    std::atomic<bool> hook = true;
    AtspiAccessibility accessibility([&] { return hook.load(); });
    FieldReader reader(accessibility);
    ASSERT_TRUE(eventually([&] { return accessibility.isTrusted(); }));
    hook = false;
    EXPECT_FALSE(accessibility.isTrusted());
    hook = true;

    shell(
        "gdbus call --session -d org.a11y.Bus -o /org/a11y/bus -m "
        "org.freedesktop.DBus.Properties.Set org.a11y.Status IsEnabled '<false>'");
    EXPECT_TRUE(eventually([&] { return !accessibility.isTrusted(); }));
    accessibility.requestTrust();
    ASSERT_TRUE(eventually([&] { return accessibility.isTrusted(); }));

    const auto launcher = launcherPid();
    ASSERT_GT(launcher, 0);

    // The launcher ends with the bus that it started.
    const auto bus = shell("pgrep -P " + std::to_string(launcher));
    ASSERT_FALSE(bus.empty());
    ::kill(std::stoi(bus), SIGKILL);
    EXPECT_TRUE(eventually([&] { return !accessibility.isTrusted(); }));
    EXPECT_FALSE(reader.focused(getpid()));

    accessibility.requestTrust();
    ASSERT_TRUE(eventually([&] { return accessibility.isTrusted(); }));
    const TestFolder folder;
    const Process editor(mousepad(folder.write("note.txt", "after")));
    const auto field = reader.waitForFocus(editor.pid(), "AXTextArea");
    ASSERT_TRUE(field);
    EXPECT_EQ(reader.value(*field), "after");
}

}  // namespace
}  // namespace quorvi::test
