#include "Quorvi/ui/indicator/RecordingPanel.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QScreen>
#include <sstream>

#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "Quorvi/platform/linux/x11/desktop/X11Bars.h"
#include "Quorvi/platform/linux/x11/desktop/X11Compositing.h"
#include "Quorvi/platform/linux/x11/desktop/X11Settings.h"
#include "tests/dictation/DictationFixture.h"
#include "tests/fakes/FakeDownloader.h"
#include "tests/fakes/FakeUpdateInstaller.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"
#include "tests/support/desktop/TestUser.h"

namespace quorvi::test {
namespace {

QApplication& application() {
    static int count = 1;
    static char name[] = "RecordingPanelTest";
    static char* arguments[] = {name, nullptr};
    static auto* only = new QApplication(count, arguments);
    return *only;
}

// The panel over a real editor on a real desktop. The controller stands on fakes.
class RecordingPanelTest : public DictationTest, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        application();
        const std::string manager = GetParam();
        if (manager != "openbox") {
            windowManager = Process({"xfwm4", "--replace", "--compositor=on"});
            ASSERT_TRUE(eventually([&] {
                return shell(
                           "xprop -id $(xprop -root -notype -f _NET_SUPPORTING_WM_CHECK 32x "
                           "' $0' _NET_SUPPORTING_WM_CHECK | cut -d' ' -f2) _NET_WM_NAME")
                           .find("Xfwm4") != std::string::npos;
            }));
            ASSERT_TRUE(eventually(x11IsComposited));
        }
        editorProgram = Process(mousepad(notes.write("note.txt", "")));
        user.bringToFront(editorProgram.pid());
        const auto found = reader.waitForFocus(editorProgram.pid(), "AXTextArea");
        ASSERT_TRUE(found);
        textField = found;
        panel = std::make_unique<RecordingPanel>(*model, updater, [] {
            return Surroundings{x11IsComposited(), x11ReducesMotion(), x11Bars()};
        });
        model->showOverlay = [this] { panel->present(); };
        model->hideOverlay = [this] { panel->hide(); };
    }
    void TearDown() override {
        model->showOverlay = model->hideOverlay = [] {};
    }

    static bool until(const std::function<bool()>& condition) {
        return eventually([&] {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
            return condition();
        });
    }
    bool isInLists() {
        std::ostringstream id;
        id << std::hex << "0x" << panel->winId();
        return shell("xprop -root _NET_CLIENT_LIST").find(id.str()) != std::string::npos;
    }
    // What the pointer is on once it lies on the panel. The X server looks when it moves.
    bool pointerHitsPanel() {
        const auto middle = panel->geometry().center();
        const auto at = [](const QPoint& point) {
            return "xdotool mousemove " + std::to_string(point.x()) + " " +
                   std::to_string(point.y());
        };
        const auto found = shell(at(middle + QPoint(3, 3)) + "; " + at(middle) +
                                 "; xdotool getmouselocation --shell");
        return found.find("WINDOW=" + std::to_string(panel->winId())) != std::string::npos;
    }

    const TestFolder notes;
    Process windowManager;
    Process editorProgram;
    AtspiAccessibility lookingGlass{[] { return true; }};
    FieldReader reader{lookingGlass};
    TestUser user;
    std::optional<AXElement> textField;
    FakeDownloader downloader{scheduler};
    FakeUpdateInstaller installer;
    AppUpdater updater{{scheduler, executor, preferences, downloader, installer, {}}};
    std::unique_ptr<RecordingPanel> panel;
};

TEST_P(RecordingPanelTest, NeitherTakesTheFocusNorClicksUntilThereIsSomethingToClick) {
    const auto before = user.activeWindow();
    keyboard.press(f8);
    scheduler.advance(1s);
    ASSERT_TRUE(panel->isVisible());
    const auto place = [&] {
        const auto usable = QGuiApplication::primaryScreen()->availableGeometry();
        return RecordingPanel::place(usable, {316, 92});
    };
    EXPECT_TRUE(until([&] { return panel->geometry() == place(); }));
    EXPECT_FALSE(pointerHitsPanel());
    EXPECT_FALSE(isInLists());
    user.type("typed on");
    EXPECT_TRUE(reader.waitForValue(*textField, "typed on"));
    EXPECT_EQ(user.activeWindow(), before);

    // The words are offered: now it can be clicked, and still the editor keeps the focus.
    accessibility.focus(accessibility.makeText(editor, "elsewhere"));
    keyboard.release(f8);
    scheduler.advance(1s);
    ASSERT_TRUE(panel->acceptsMouse()) << model->message();
    EXPECT_TRUE(until([&] { return pointerHitsPanel(); }));
    for (const auto* button : panel->findChildren<QAbstractButton*>())
        if (button->isVisible()) {
            const auto middle = button->mapToGlobal(button->rect().center());
            shell("xdotool mousemove " + std::to_string(middle.x()) + " " +
                  std::to_string(middle.y()));
        }
    pasteboard.copyText("other");
    user.click(1);
    EXPECT_TRUE(until([&] {
        scheduler.settle();
        return pasteboard.text() == model->lastTranscript();
    }));
    user.type(" and on");
    EXPECT_TRUE(reader.waitForValue(*textField, "typed on and on"));
    EXPECT_EQ(user.activeWindow(), before);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, RecordingPanelTest, testing::Values("openbox", "xfwm4"),
                         [](const auto& one) { return std::string(one.param); });

}  // namespace
}  // namespace quorvi::test
