#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>

#include "Quorvi/app/composition/LinuxDesktop.h"
#include "Quorvi/shell/QtScheduler.h"
#include "Quorvi/ui/indicator/RecordingPanel.h"
#include "tests/dictation/DictationFixture.h"
#include "tests/fakes/FakeDownloader.h"
#include "tests/fakes/FakeUpdateInstaller.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"
#include "tests/support/ui/SeenTexts.h"

namespace quorvi::test {
namespace {

// Two monitors beside each other, the right one with a panel at its bottom, and a manager of the
// desktop's settings. The controller stands on fakes, the indicator on the real desktop.
class RecordingPanelSurroundingsTest : public DictationTest {
protected:
    static void SetUpTestSuite() {
        shell(
            "xrandr --setmonitor left 640/169x800/211+0+0 screen;"
            "xrandr --setmonitor right 640/169x800/211+640+0 none");
        static int count = 1;
        static char name[] = "RecordingPanelSurroundingsTest";
        static char* arguments[] = {name, nullptr};
        new QApplication(count, arguments);
        ASSERT_EQ(QGuiApplication::screens().size(), 2);
    }
    void SetUp() override {
        bar = Process({"tint2", "-c",
                       files_.write("tint2rc",
                                    "panel_monitor = 2\npanel_position = bottom center horizontal\n"
                                    "panel_size = 100% 40\npanel_items = C\n"
                                    "strut_policy = follow_size\n")});
        ASSERT_TRUE(eventually([] {
            return shell("xprop -root _NET_WORKAREA").find("0, 0, 1280, 760") != std::string::npos;
        }));
        model->showOverlay = [this] { panel.present(); };
        model->hideOverlay = [this] { panel.hide(); };
        // The first look is under way.
        QCoreApplication::processEvents();
    }
    void TearDown() override {
        model->showOverlay = model->hideOverlay = [] {};
    }

    void announceAnimations(bool on) {
        const auto file =
            files_.write("xsettingsd", "Gtk/EnableAnimations " + std::to_string(on) + "\n");
        if (settings.pid() > 0)
            settings.signal(SIGHUP);
        else
            settings = Process({"xsettingsd", "-c", file});
    }
    // A dictation begins with the pointer there; what is known of the desktop may follow a moment
    // later, and is then followed.
    bool showsAt(const std::string& pointer, const QRect& usable) {
        shell("xdotool mousemove " + pointer);
        QCoreApplication::processEvents();
        keyboard.press(f8);
        scheduler.advance(1s);
        const auto place = RecordingPanel::place(usable, {316, 92});
        const bool found = until([&] { return panel.isVisible() && panel.geometry() == place; });
        EXPECT_EQ(shell("xwininfo -id " + std::to_string(panel.winId()) +
                        " | grep -c 'Absolute upper-left Y: *" + std::to_string(place.y()) + "$'"),
                  "1\n");
        model->cancel();
        keyboard.release(f8);
        scheduler.advance(1s);
        return found;
    }
    static bool until(const std::function<bool()>& condition) {
        return eventually([&] {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
            return condition();
        });
    }

    const TestFolder files_;
    Process bar;
    Process settings;
    FakeDownloader downloader{scheduler};
    FakeUpdateInstaller installer;
    AppUpdater updater{{scheduler, executor, preferences, downloader, installer, {}}};
    QtScheduler loop;
    LinuxDesktop desktop{loop};
    RecordingPanel panel{*model, updater, [this] { return desktop.surroundings(); }};
    Subscription changes = desktop.onSurroundingsChanged([this] { panel.followSurroundings(); });
};

TEST_F(RecordingPanelSurroundingsTest, LiesOnThePointersScreenAboveThePanelOfThatScreen) {
    EXPECT_TRUE(showsAt("1000 300", {640, 0, 640, 760}));
    EXPECT_TRUE(showsAt("100 300", {0, 0, 640, 800}));
}

TEST_F(RecordingPanelSurroundingsTest, DoesWithoutMovementWhileTheDesktopSaysSo) {
    auto* meter = part<LevelMeter>(panel);
    const auto moves = [&](double level) {
        meter->setLevel(level);
        return meter->isMoving();
    };
    keyboard.press(f8);
    scheduler.advance(1s);
    for (const bool animations : {true, false, true}) {
        announceAnimations(animations);
        EXPECT_TRUE(eventually([&] {
            panel.present();
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
            return desktop.surroundings().reducesMotion != animations;
        }));
        meter->setLevel(0);
        EXPECT_TRUE(until([&] { return !meter->isMoving(); }));
        EXPECT_EQ(moves(1), animations);
    }
    keyboard.release(f8);
    model->cancel();
}

}  // namespace
}  // namespace quorvi::test
