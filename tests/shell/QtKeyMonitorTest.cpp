#include "Quorvi/shell/QtKeyMonitor.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QShortcut>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/x11/keyboard/X11KeyEventTap.h"
#include "Quorvi/shell/QtScheduler.h"
#include "tests/support/desktop/TestUser.h"
#include "tests/support/ui/DesktopQt.h"

namespace quorvi::test {
namespace {

// A real window whose keys a user presses.
class QtKeyMonitorTest : public testing::Test {
protected:
    static void SetUpTestSuite() { startDesktopQt(); }

    QtKeyMonitorTest() {
        QObject::connect(&shortcut, &QShortcut::activated, &shortcut, [this] { ++shortcuts; });
        field.show();
        field.activateWindow();
        EXPECT_TRUE(inQtLoop([this] { return field.hasFocus(); }));
    }

    void observe(bool swallows) {
        observation = monitor.observe([this, swallows](const LocalKeyEvent& event) {
            const bool isKey = event.type == LocalKeyEvent::Type::keyDown;
            seen.push_back((isKey ? "key " : "flags ") + std::to_string(event.keyCode) + " " +
                           std::to_string(event.flags) + " " + event.characters.value_or("-"));
            return swallows;
        });
    }
    bool untilSeen(const std::vector<std::string>& wanted) {
        const bool good = inQtLoop([&] { return seen == wanted; });
        if (!good)
            for (const auto& line : seen) ADD_FAILURE() << line;
        seen.clear();
        return good;
    }

    QLineEdit field;
    QShortcut shortcut{QKeySequence(Qt::CTRL | Qt::Key_K), &field};
    int shortcuts = 0;
    QtKeyMonitor monitor;
    Subscription observation;
    std::vector<std::string> seen;
    TestUser user;
};

TEST_F(QtKeyMonitorTest, SeesEachKeyOnceWithItsPositionAndFlagsBeforeTheWindowDoes) {
    observe(true);
    user.chord({key::leftControl}, key::k);
    EXPECT_TRUE(untilSeen({"flags 59 262145 -", "key 40 262145 K", "flags 59 0 -"}));
    user.tap(key::rightAlt);
    EXPECT_TRUE(untilSeen({"flags 61 524352 -", "flags 61 0 -"}));
    user.tap(key::f8);
    EXPECT_TRUE(untilSeen({"key 100 0 F8"}));
    user.chord({key::leftShift}, key::a);
    EXPECT_TRUE(untilSeen({"flags 56 131074 -", "key 0 131074 A", "flags 56 0 -"}));
    EXPECT_EQ(field.text(), "");
    EXPECT_EQ(shortcuts, 0);

    observe(false);
    user.tap(key::a);
    EXPECT_TRUE(inQtLoop([this] { return field.text() == "a"; })) << "what is let through arrives";
    observation = {};
    user.chord({key::leftControl}, key::k);
    EXPECT_TRUE(inQtLoop([this] { return shortcuts == 1; })) << "the window has its keys back";
}

TEST_F(QtKeyMonitorTest, MayEndWithinItsOwnHandler) {
    observation = monitor.observe([this](const LocalKeyEvent&) {
        observation = {};
        return true;
    });
    user.type("ab");
    EXPECT_TRUE(inQtLoop([this] { return field.text() == "b"; })) << field.text().toStdString();
}

// The global shortcut is swallowed for every window, including the program's own.
TEST_F(QtKeyMonitorTest, SeesTheGlobalShortcutOnceItIsNoLongerSwallowed) {
    QtScheduler scheduler;
    X11KeyEventTap tap(scheduler);
    int tapped = 0;
    tap.setSwallowed({{100, 0}});
    ASSERT_TRUE(tap.install([&](const TapEvent& event) {
        tapped += event.type == TapEventType::keyUp;
        return TapVerdict::pass;
    }));
    observe(true);
    user.tap(key::f8);
    ASSERT_TRUE(inQtLoop([&] { return tapped == 1; }));
    EXPECT_TRUE(seen.empty());
    tap.setSwallowed({});
    // The hook lets go of the key in its own time.
    EXPECT_TRUE(inQtLoop([&] {
        user.tap(key::f8);
        return !seen.empty();
    }));
    EXPECT_EQ(seen.front(), "key 100 0 F8");
}

}  // namespace
}  // namespace quorvi::test
