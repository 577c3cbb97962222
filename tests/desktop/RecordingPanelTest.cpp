#include "Quorvi/ui/indicator/RecordingPanel.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QScreen>
#include <algorithm>

#include "Quorvi/app/composition/LinuxDesktop.h"
#include "Quorvi/platform/linux/x11/desktop/X11Compositing.h"
#include "Quorvi/shell/QtScheduler.h"
#include "tests/dictation/DictationFixture.h"
#include "tests/fakes/FakeDownloader.h"
#include "tests/fakes/FakeUpdateInstaller.h"
#include "tests/support/desktop/EditorUser.h"
#include "tests/support/ui/DesktopQt.h"
#include "tests/support/ui/Seen.h"

namespace quorvi::test {
namespace {

// The indicator on a real desktop with two monitors side by side. The controller is on fakes.
class RecordingPanelTest : public DictationTest {
protected:
    static void SetUpTestSuite() {
        shell(
            "xrandr --setmonitor left 640/169x800/211+0+0 screen;"
            "xrandr --setmonitor right 640/169x800/211+640+0 none");
        startDesktopQt();
        ASSERT_EQ(QGuiApplication::screens().size(), 2);
    }
    RecordingPanelTest() {
        model->showOverlay = [this] { panel.present(); };
        model->hideOverlay = [this] { panel.hide(); };
        QCoreApplication::processEvents();
    }
    ~RecordingPanelTest() override {
        model->showOverlay = model->hideOverlay = [] {};
    }

    static void movePointer(const QPoint& to) {
        shell("xdotool mousemove " + std::to_string(to.x()) + " " + std::to_string(to.y()));
    }
    bool comesTo(const QRect& usable) {
        const auto place = RecordingPanel::place(usable, {316, 92});
        return inQtLoop([&] { return panel.isVisible() && panel.geometry() == place; });
    }
    void beginDictation() {
        keyboard.press(f8);
        scheduler.advance(1s);
    }
    void endDictation() {
        keyboard.release(f8);
        scheduler.advance(1s);
    }

    const TestFolder files_;
    FakeDownloader downloader{scheduler};
    FakeUpdateInstaller installer;
    AppUpdater updater{{scheduler, executor, preferences, downloader, installer, {}}};
    QtScheduler loop;
    LinuxDesktop desktop{loop};
    RecordingPanel panel{*model, updater, [this] { return desktop.surroundings(); }};
    Subscription changes = desktop.onSurroundingsChanged([this] { panel.followSurroundings(); });
};

TEST_F(RecordingPanelTest, IsOnThePointersScreenAboveTheBarOfThatScreen) {
    const Process bar({"tint2", "-c",
                       files_.write("tint2rc",
                                    "panel_monitor = 2\npanel_position = bottom center horizontal\n"
                                    "panel_size = 100% 40\npanel_items = C\n"
                                    "strut_policy = follow_size\n")});
    ASSERT_TRUE(eventually([] {
        return shell("xprop -root _NET_WORKAREA").find("0, 0, 1280, 760") != std::string::npos;
    }));
    for (const auto& [pointer, usable] : {std::pair(QPoint(1000, 300), QRect(640, 0, 640, 760)),
                                          {QPoint(100, 300), QRect(0, 0, 640, 800)}}) {
        movePointer(pointer);
        QCoreApplication::processEvents();
        beginDictation();
        EXPECT_TRUE(comesTo(usable));
        EXPECT_EQ(shell("xwininfo -id " + std::to_string(panel.winId()) +
                        " | grep -c 'Absolute upper-left Y: *" +
                        std::to_string(panel.geometry().y()) + "$'"),
                  "1\n");
        model->cancel();
        endDictation();
    }
}

TEST_F(RecordingPanelTest, IsNotAnimatedWhileTheDesktopDisablesAnimations) {
    auto* meter = part<LevelMeter>(panel);
    beginDictation();
    meter->setLevel(1);
    EXPECT_TRUE(meter->isMoving());
    const Process settings(
        {"xsettingsd", "-c", files_.write("xsettingsd", "Gtk/EnableAnimations 0\n")});
    EXPECT_TRUE(inQtLoop([&] { return desktop.surroundings().reducesMotion; }));
    panel.present();
    meter->setLevel(0);
    EXPECT_TRUE(inQtLoop([&] { return !meter->isMoving(); }));
    meter->setLevel(1);
    EXPECT_FALSE(meter->isMoving());
    model->cancel();
    endDictation();
}

// Over a real editor, under a window manager with a compositor and one without.
class RecordingPanelOverEditor : public RecordingPanelTest,
                                 public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        if (GetParam() == std::string("xfwm4")) {
            windowManager = Process({"xfwm4", "--replace", "--compositor=on"});
            ASSERT_TRUE(eventually(x11IsComposited));
        }
        ASSERT_TRUE(desk.openMousepad());
    }
    // Whether the pointer, in the middle of the panel, is on it. The X server looks when it moves.
    bool pointerHitsPanel() {
        const auto middle = panel.geometry().center();
        movePointer(middle + QPoint(3, 3));
        movePointer(middle);
        return shell("xdotool getmouselocation --shell")
                   .find("WINDOW=" + std::to_string(panel.winId())) != std::string::npos;
    }

    Process windowManager;
    EditorUser desk;
};

TEST_P(RecordingPanelOverEditor, NeverTakesTheFocusAndTakesClicksOnlyOnAButton) {
    const auto before = desk.user.activeWindow();
    movePointer({100, 300});
    beginDictation();
    EXPECT_TRUE(comesTo({0, 0, 640, 800}));
    EXPECT_FALSE(pointerHitsPanel());
    EXPECT_EQ(std::ranges::count(desk.user.windows(), panel.winId()), 0) << "in the task bar";
    desk.user.type("typed on");
    EXPECT_TRUE(desk.reader.waitForValue(*desk.openField, "typed on"));
    EXPECT_EQ(desk.user.activeWindow(), before);

    // The panel offers the words; the editor still keeps the focus.
    accessibility.focus(accessibility.makeText(editor, "elsewhere"));
    endDictation();
    ASSERT_TRUE(panel.acceptsMouse());
    EXPECT_TRUE(inQtLoop([&] { return pointerHitsPanel(); }));
    const auto& copy = Seen(panel).control<QAbstractButton>("Copy transcript");
    movePointer(copy.mapToGlobal(copy.rect().center()));
    pasteboard.copyText("other");
    desk.user.click(1);
    EXPECT_TRUE(inQtLoop([&] {
        scheduler.settle();
        return pasteboard.text() == model->lastTranscript();
    }));
    desk.user.type(" and on");
    EXPECT_TRUE(desk.reader.waitForValue(*desk.openField, "typed on and on"));
    EXPECT_EQ(desk.user.activeWindow(), before);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, RecordingPanelOverEditor,
                         testing::Values("openbox", "xfwm4"),
                         [](const auto& one) { return std::string(one.param); });

}  // namespace
}  // namespace quorvi::test
