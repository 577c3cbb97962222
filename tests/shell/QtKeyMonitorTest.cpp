#include "Quorvi/shell/QtKeyMonitor.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QShortcut>
#include <string>
#include <vector>

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

}  // namespace
}  // namespace quorvi::test
