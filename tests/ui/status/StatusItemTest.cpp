#include "Quorvi/ui/status/StatusItem.h"

#include <gtest/gtest.h>

#include <QApplication>

#include "tests/dictation/DictationFixture.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/TrayHost.h"

namespace quorvi::test {
namespace {

// The icon in a tray over D-Bus, driven through its exported menu as a desktop does.
class StatusItemTest : public DictationTest {
protected:
    StatusItemTest() {
        static int count = 1;
        static char name[] = "StatusItemTest";
        static char* arguments[] = {name, nullptr};
        static QApplication application(count, arguments);
        host().forgetItem();
        item = std::make_unique<StatusItem>(
            *model,
            StatusItem::Actions{[this] { asked += "window "; }, [this] { asked += "updates "; },
                                [this] { asked += "quit "; }});
    }
    void SetUp() override {
        ASSERT_TRUE(until([] { return !host().item().empty(); })) << "no icon was announced";
    }

    static void runLoop() { QCoreApplication::processEvents(QEventLoop::AllEvents, 10); }
    static bool until(const std::function<bool()>& condition) {
        return eventually([&] {
            runLoop();
            return condition();
        });
    }
    // The rows one after another, those that can't be used in round brackets.
    std::string menu() {
        std::string text;
        for (const auto& row : host().menu(runLoop))
            text += (row.enabled ? row.label : "(" + row.label + ")") + "\n";
        return text;
    }
    void choose(const std::string& label) {
        for (const auto& row : host().menu(runLoop))
            if (row.label == label) {
                host().click(row, runLoop);
                runLoop();
                settle();
                return;
            }
        ADD_FAILURE() << "no row " << label;
    }
    // Before the application asks whether there is a tray, and as long as it lives.
    static TrayHost& host() {
        static TrayHost only;
        return only;
    }

    TrayHost& before = host();
    std::unique_ptr<StatusItem> item;
    std::string asked;
};

TEST_F(StatusItemTest, MenuFollowsTheDictationItemByItem) {
    const std::string always =
        "Open Quorvi…\nHistory…\nInsights…\nSettings…\n(Copy last transcript)\nReset dictation\n-\n"
        "Check for Updates…\nQuit Quorvi\n";
    EXPECT_EQ(menu(), "(Quorvi · Ready when you are)\n(F8 · Hold to talk)\n-\n" + always);

    keyboard.press(f8);
    scheduler.advance(1s);
    EXPECT_EQ(menu(),
              "(Quorvi · Listening…)\n(F8 · Hold to talk)\n-\nStop & insert\nCancel "
              "dictation\n" +
                  always);
    service.answersAfter = 1h;
    choose("Stop & insert");
    ASSERT_EQ(model->stage(), DictationStage::transcribing);
    EXPECT_EQ(menu(),
              "(Quorvi · Transcribing…)\n(F8 · Hold to talk)\n-\nCancel dictation\n" + always);
    choose("Cancel dictation");
    EXPECT_EQ(model->stage(), DictationStage::idle);
    keyboard.release(f8);

    model->setMode(DictationMode::toggle);
    model->setShortcut({0, modifierFlag::control, "⌃&"});
    EXPECT_TRUE(menu().starts_with("(Quorvi · Ready when you are)\n(⌃& · Press to toggle)\n"))
        << menu();
}

TEST_F(StatusItemTest, EntriesDoWhatTheySay) {
    choose("History…");
    EXPECT_EQ(model->selectedPage(), WindowPage::history);
    choose("Insights…");
    EXPECT_EQ(model->selectedPage(), WindowPage::insights);
    choose("Settings…");
    EXPECT_EQ(model->selectedPage(), WindowPage::settings);
    choose("Open Quorvi…");
    EXPECT_EQ(model->selectedPage(), WindowPage::settings);
    choose("Check for Updates…");
    choose("Quit Quorvi");
    EXPECT_EQ(asked, "window window window window updates quit ");
    dictateToTheEnd();
    EXPECT_NE(menu().find("\nCopy last transcript\n"), std::string::npos) << menu();
    pasteboard.copyText("other");
    choose("Copy last transcript");
    EXPECT_EQ(pasteboard.text(), model->lastTranscript());
}

}  // namespace
}  // namespace quorvi::test
