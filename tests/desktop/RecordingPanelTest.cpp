#include "Quorvi/ui/indicator/RecordingPanel.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QScreen>
#include <sstream>

#include "Quorvi/app/composition/LinuxDesktop.h"
#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "Quorvi/platform/linux/x11/desktop/X11Compositing.h"
#include "Quorvi/shell/QtScheduler.h"
#include "tests/dictation/DictationFixture.h"
#include "tests/fakes/FakeDownloader.h"
#include "tests/fakes/FakeUpdateInstaller.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"
#include "tests/support/desktop/TestUser.h"
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
    Process settings;
    auto* meter = part<LevelMeter>(panel);
    beginDictation();
    for (const bool animations : {true, false, true}) {
        const auto file =
            files_.write("xsettingsd", "Gtk/EnableAnimations " + std::to_string(animations) + "\n");
        if (settings.pid() > 0)
            settings.signal(SIGHUP);
        else
            settings = Process({"xsettingsd", "-c", file});
        EXPECT_TRUE(inQtLoop([&] {
            panel.present();
            return desktop.surroundings().reducesMotion != animations;
        }));
        meter->setLevel(0);
        EXPECT_TRUE(inQtLoop([&] { return !meter->isMoving(); }));
        meter->setLevel(1);
        EXPECT_EQ(meter->isMoving(), animations);
    }
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
            ASSERT_TRUE(eventually([&] {
                return shell(
                           "xprop -id $(xprop -root -notype -f _NET_SUPPORTING_WM_CHECK 32x "
                           "' $0' _NET_SUPPORTING_WM_CHECK | cut -d' ' -f2) _NET_WM_NAME")
                           .find("Xfwm4") != std::string::npos;
            }));
            ASSERT_TRUE(eventually(x11IsComposited));
        }
        editorProgram = Process(mousepad(files_.write("note.txt", "")));
        user.bringToFront(editorProgram.pid());
        textField = reader.waitForFocus(editorProgram.pid(), "AXTextArea");
        ASSERT_TRUE(textField);
    }
    bool isInWindowList() {
        std::ostringstream id;
        id << std::hex << "0x" << panel.winId();
        return shell("xprop -root _NET_CLIENT_LIST").find(id.str()) != std::string::npos;
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
    Process editorProgram;
    AtspiAccessibility accessibilityBus{[] { return true; }};
    FieldReader reader{accessibilityBus};
    TestUser user;
    std::optional<AXElement> textField;
};

TEST_P(RecordingPanelOverEditor, NeverTakesTheFocusAndTakesClicksOnlyOnAButton) {
    const auto before = user.activeWindow();
    movePointer({100, 300});
    beginDictation();
    EXPECT_TRUE(comesTo({0, 0, 640, 800}));
    EXPECT_FALSE(pointerHitsPanel());
    EXPECT_FALSE(isInWindowList());
    user.type("typed on");
    EXPECT_TRUE(reader.waitForValue(*textField, "typed on"));
    EXPECT_EQ(user.activeWindow(), before);

    // The panel offers the words; the editor still keeps the focus.
    accessibility.focus(accessibility.makeText(editor, "elsewhere"));
    endDictation();
    ASSERT_TRUE(panel.acceptsMouse());
    EXPECT_TRUE(inQtLoop([&] { return pointerHitsPanel(); }));
    const auto& copy = Seen(panel).control<QAbstractButton>("Copy transcript");
    movePointer(copy.mapToGlobal(copy.rect().center()));
    pasteboard.copyText("other");
    user.click(1);
    EXPECT_TRUE(inQtLoop([&] {
        scheduler.settle();
        return pasteboard.text() == model->lastTranscript();
    }));
    user.type(" and on");
    EXPECT_TRUE(reader.waitForValue(*textField, "typed on and on"));
    EXPECT_EQ(user.activeWindow(), before);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, RecordingPanelOverEditor,
                         testing::Values("openbox", "xfwm4"),
                         [](const auto& one) { return std::string(one.param); });

}  // namespace
}  // namespace quorvi::test
