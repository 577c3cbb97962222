#include "Quorvi/platform/linux/atspi/AtspiBus.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <atomic>
#include <string>

#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "Quorvi/platform/linux/atspi/AtspiPeers.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"

namespace quorvi::test {
namespace {

using namespace atspi;
using namespace std::chrono_literals;

struct NoObserver : BusObserver {
    void focusChanged(const ObjectRef&, bool) override {}
    void windowActiveChanged(const ObjectRef&, bool) override {}
    void peerLeft(const std::string&) override {}
    void busLost() override {}
};

// The process that provides the accessibility bus; 0 while there is none.
pid_t launcherPid() {
    const auto answer = shell(
        "gdbus call --session -d org.freedesktop.DBus -o /org/freedesktop/DBus "
        "-m org.freedesktop.DBus.GetConnectionUnixProcessID org.a11y.Bus 2>/dev/null");
    const auto digits = answer.find_first_of("0123456789", answer.find("uint32") + 6);
    return digits == std::string::npos ? 0 : std::stoi(answer.substr(digits));
}

void setEnabled(bool enabled) {
    shell(std::string("gdbus call --session -d org.a11y.Bus -o /org/a11y/bus -m "
                      "org.freedesktop.DBus.Properties.Set org.a11y.Status IsEnabled '<") +
          (enabled ? "true" : "false") + ">'");
}

TEST(AtspiBus, TrustFollowsTheDesktopsSwitchTheHookAndTheBus) {
    std::atomic<bool> hook = true;
    AtspiAccessibility accessibility([&] { return hook.load(); });
    FieldReader reader(accessibility);
    ASSERT_TRUE(eventually([&] { return accessibility.isTrusted(); }));
    hook = false;
    EXPECT_FALSE(accessibility.isTrusted());
    hook = true;
    EXPECT_TRUE(accessibility.isTrusted());

    setEnabled(false);
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

TEST(AtspiPeers, AnApplicationThatTimedOutAnswersTheNextQuestion) {
    NoObserver observer;
    AtspiBus bus(observer);
    AtspiPeers peers(bus);
    ASSERT_TRUE(eventually([&] { return bus.isUsable(); }));

    const TestFolder folder;
    const Process editor(mousepad(folder.write("note.txt", "text")));
    const auto soon = [] { return std::chrono::steady_clock::now() + 20s; };
    std::vector<std::string> names;
    ASSERT_TRUE(eventually([&] {
        names = peers.namesOf(editor.pid(), soon());
        return !names.empty();
    }));
    const auto answers = [&](TimePoint deadline) {
        return peers.call({{names[0], rootPath}, accessibleInterface, "GetRole", arguments()},
                          deadline) != nullptr;
    };
    editor.freeze();
    EXPECT_FALSE(answers(std::chrono::steady_clock::now() + 100ms));
    EXPECT_EQ(peers.process(names[0], soon()), editor.pid()) << "the bus itself does not hang";
    editor.thaw();
    EXPECT_TRUE(answers(soon()));
}

}  // namespace
}  // namespace quorvi::test
