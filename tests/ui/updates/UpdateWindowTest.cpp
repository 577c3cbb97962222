#include "Quorvi/ui/updates/UpdateWindow.h"

#include <QTextBrowser>

#include "tests/ui/WindowTest.h"

namespace quorvi::test {
namespace {

class UpdateWindowTest : public WindowTest {
protected:
    UpdateWindowTest() {
        world.updater.showWindow = [this] { updates.present(); };
    }
    // Begins a check and has it answered.
    Seen check() {
        world.updater.check();
        world.scheduler.advance(2s);
        return Seen(updates);
    }
    // Presses a button, and lets what it begins come to its end.
    Seen press(const char* name) {
        Seen(updates).press(name);
        world.scheduler.advance(2s);
        return Seen(updates);
    }

    UpdateWindow updates{world.updater};
};

TEST_F(UpdateWindowTest, LeadsFromTheCheckToTheInstaller) {
    world.offerUpdate("a package", "<h3>New</h3><ul><li>Greek</li></ul>");
    world.updater.check();
    EXPECT_EQ(Seen(updates).text(), "Checking for updates… | [Cancel]");
    expectInOrder(
        check(), {"Quorvi 2.0 is available", "You have Quorvi 0.1.0.\nWednesday, November 25, 2026",
                  "New\nGreek", "[Later]", "[Download]"});
    EXPECT_EQ(Seen(updates).clipped(), QStringList());

    Seen(updates).press("Download");
    world.scheduler.advance(500ms);
    EXPECT_EQ(part<QProgressBar>(updates)->value(), 444);
    EXPECT_TRUE(Seen(updates).has("4 bytes of 9 bytes"));
    EXPECT_EQ(Seen(updates).clipped(), QStringList());
    EXPECT_TRUE(press("Cancel").has("[Download]"));
    EXPECT_TRUE(press("Download").has("Its signature has been verified."));
    EXPECT_TRUE(world.installer.opened.empty()) << "nothing is opened without the user's consent";
    EXPECT_TRUE(press("Install…").has("The installer is open"));
    EXPECT_EQ(world.installer.opened.size(), 1u);
    EXPECT_EQ(Seen(updates).clipped(), QStringList());
    press("Close");
    EXPECT_FALSE(updates.isVisible());
    EXPECT_EQ(world.updater.stage(), UpdateStage::idle);
}

TEST_F(UpdateWindowTest, NotesLoadNothing) {
    world.offerUpdate("a package", "News");
    check();
    const QUrl picture = QUrl::fromLocalFile(QStringLiteral("/usr/share/pixmaps/any.png"));
    EXPECT_FALSE(
        part<QTextBrowser>(updates)->loadResource(QTextDocument::ImageResource, picture).isValid());
}

}  // namespace
}  // namespace quorvi::test
