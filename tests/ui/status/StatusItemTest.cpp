#include "Quorvi/ui/status/StatusItem.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>

#include "Quorvi/dictation/WindowPage.h"
#include "tests/dictation/DictationFixture.h"
#include "tests/support/desktop/TrayHost.h"
#include "tests/support/ui/DesktopQt.h"

namespace quorvi::test {
namespace {

// The icon in a tray over D-Bus, and its menu.
class StatusItemTest : public DictationTest {
protected:
    StatusItemTest() {
        host();  // before Qt asks whether there is a tray
        startDesktopQt();
        host().forgetItem();
        item = std::make_unique<StatusItem>(
            *model,
            StatusItem::Actions{[this] { asked += "window "; }, [this] { asked += "updates "; },
                                [this] { asked += "quit "; }});
    }
    void SetUp() override {
        ASSERT_TRUE(inQtLoop([] { return host().waitForItem(0s); })) << "no icon was announced";
    }

    static QMenu& shown() {
        for (auto* widget : QApplication::topLevelWidgets())
            if (auto* found = qobject_cast<QMenu*>(widget)) return *found;
        throw std::runtime_error("no menu");
    }
    static std::string label(const QAction& entry) {
        if (entry.isSeparator()) return "-";
        return entry.text().replace(QStringLiteral("&&"), QStringLiteral("&")).toStdString();
    }
    // The entries, one per line; disabled ones in round brackets.
    static std::string menu() {
        std::string text;
        for (const auto* entry : shown().actions())
            text += (entry->isEnabled() ? label(*entry) : "(" + label(*entry) + ")") + "\n";
        return text;
    }
    void choose(const std::string& wanted) {
        for (auto* entry : shown().actions())
            if (label(*entry) == wanted) {
                entry->trigger();
                break;
            }
        QCoreApplication::processEvents();
        settle();
    }
    static TrayHost& host() {
        static TrayHost only;
        return only;
    }

    std::unique_ptr<StatusItem> item;
    std::string asked;
};

TEST_F(StatusItemTest, TheMenuFollowsTheDictation) {
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
    EXPECT_TRUE(menu().starts_with(
        "(Quorvi · Transcribing…)\n(F8 · Hold to talk)\n-\nCancel dictation\n" + always));
    choose("Cancel dictation");
    EXPECT_EQ(model->stage(), DictationStage::idle);
    keyboard.release(f8);
    model->setMode(DictationMode::toggle);
    model->setShortcut({0, modifierFlag::control, "⌃&"});
    EXPECT_TRUE(menu().starts_with("(Quorvi · Ready when you are)\n(Ctrl+& · Press to toggle)\n"))
        << menu();
}

TEST_F(StatusItemTest, EntriesDoWhatTheySay) {
    for (const auto& [entry, page] : {std::pair("History…", WindowPage::history),
                                      {"Insights…", WindowPage::insights},
                                      {"Settings…", WindowPage::settings},
                                      {"Open Quorvi…", WindowPage::settings}}) {
        choose(entry);
        EXPECT_EQ(model->selectedPage(), page) << entry;
    }
    choose("Check for Updates…");
    choose("Quit Quorvi");
    EXPECT_EQ(asked, "window window window window updates quit ");
    pasteboard.copyText("other");
    poster.onPost = nullptr;
    dictateToTheEnd();
    EXPECT_EQ(pasteboard.text(), model->lastTranscript()) << "nobody took it";
    choose("Restore my clipboard");
    EXPECT_EQ(pasteboard.text(), "other");
    choose("Copy last transcript");
    EXPECT_EQ(pasteboard.text(), model->lastTranscript());
}

}  // namespace
}  // namespace quorvi::test
