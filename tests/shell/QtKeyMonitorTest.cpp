#include "Quorvi/shell/QtKeyMonitor.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QShortcut>
#include <memory>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/x11/keyboard/X11KeyEventTap.h"
#include "Quorvi/shell/QtScheduler.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/TestUser.h"

namespace quorvi::test {
namespace {

// A real window whose keys a user presses.
class QtKeyMonitorTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        static int count = 1;
        static char name[] = "keys";
        static char* arguments[] = {name, nullptr};
        qt = std::make_unique<QApplication>(count, arguments);
    }
    static void TearDownTestSuite() { qt.reset(); }

    QtKeyMonitorTest() {
        QObject::connect(&shortcut, &QShortcut::activated, &shortcut, [this] { ++shortcuts; });
        field.show();
        field.activateWindow();
        EXPECT_TRUE(until([this] { return field.hasFocus(); }));
    }

    void observe(bool swallows) {
        observation = monitor.observe([this, swallows](const LocalKeyEvent& event) {
            const bool isKey = event.type == LocalKeyEvent::Type::keyDown;
            seen.push_back((isKey ? "key " : "flags ") + std::to_string(event.keyCode) + " " +
                           std::to_string(event.flags) + " " + event.characters.value_or("-"));
            return swallows;
        });
    }
    static bool until(const std::function<bool()>& condition) {
        return eventually([&] {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            return condition();
        });
    }
    bool untilSeen(const std::vector<std::string>& wanted) {
        const bool good = until([&] { return seen == wanted; });
        if (!good)
            for (const auto& line : seen) ADD_FAILURE() << line;
        seen.clear();
        return good;
    }

    static inline std::unique_ptr<QApplication> qt;
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
    EXPECT_TRUE(until([this] { return field.text() == "a"; })) << "what is let through arrives";
    observation = {};
    user.chord({key::leftControl}, key::k);
    EXPECT_TRUE(until([this] { return shortcuts == 1; })) << "the window has its keys back";
}

TEST_F(QtKeyMonitorTest, MayEndWithinItsOwnHandler) {
    observation = monitor.observe([this](const LocalKeyEvent&) {
        observation = {};
        return true;
    });
    user.type("ab");
    EXPECT_TRUE(until([this] { return field.text() == "b"; })) << field.text().toStdString();
}

// The key that is the shortcut so far is held back from every window, this program's own too.
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
    ASSERT_TRUE(until([&] { return tapped == 1; }));
    EXPECT_TRUE(seen.empty());
    tap.setSwallowed({});
    // The hook lets go of the key in its own time.
    EXPECT_TRUE(until([&] {
        user.tap(key::f8);
        return !seen.empty();
    }));
    EXPECT_EQ(seen.front(), "key 100 0 F8");
}

}  // namespace
}  // namespace quorvi::test
