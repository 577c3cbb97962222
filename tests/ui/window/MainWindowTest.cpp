#include "Quorvi/ui/window/MainWindow.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QPushButton>

#include "Quorvi/ui/corrections/CorrectionEditor.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/DesignStyle.h"
#include "Quorvi/ui/design/Symbols.h"
#include "Quorvi/ui/translations/ModelText.h"
#include "Quorvi/ui/translations/Translations.h"
#include "tests/support/ui/Palettes.h"
#include "tests/support/ui/SeenWidgets.h"
#include "tests/support/ui/WindowWorld.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

// The window without a screen, on fakes of everything behind it.
class MainWindowTest : public testing::Test {
protected:
    QStringList seen(QWidget& widget) {
        QCoreApplication::processEvents();
        return SeenWidgets(widget).lines();
    }
    QStringList page() { return seen(*window().findChild<QStackedWidget*>()->currentWidget()); }
    MainWindow& window() { return world.show(); }
    MainWindow& settings() {
        world.model.setSelectedPage(WindowPage::settings);
        return window();
    }
    template <class T>
    T& control(QWidget& in, const char* name) {
        auto* found = SeenWidgets(in).named<T>(QString::fromUtf8(name));
        if (!found) throw std::runtime_error(std::string("nothing to be seen is called ") + name);
        return *found;
    }
    void press(const char* name) {
        QCoreApplication::processEvents();
        control<QAbstractButton>(window(), name).click();
    }
    void expectTogether(const QStringList& all, const QStringList& expected) {
        const auto joined = all.join(QLatin1Char('\n'));
        EXPECT_TRUE(joined.contains(expected.join(QLatin1Char('\n'))))
            << "not in this order:\n"
            << expected.join(QLatin1Char('\n')).toStdString() << "\nin:\n"
            << joined.toStdString();
    }

    WindowWorld world;
};

TEST_F(MainWindowTest, EachRowOfTheSetupTurnsToReadyByItself) {
    world.withdrawEverything();
    expectTogether(page(),
                   {"Speak in your language.",
                    "Quorvi stays in your menu bar. Press Esc to cancel a dictation.",
                    "SET UP YOUR FLOW", "Make it yours", "ONE-TIME SETUP", "OpenAI API key",
                    "Stored securely in your Mac’s Keychain", "[Add key]", "Microphone",
                    "Record only while you dictate", "[Enable]", "Accessibility",
                    "Use your shortcut and insert text", "[Enable]",
                    "Enable keyboard access in Input Monitoring",
                    "If access is already enabled, quit and reopen Quorvi.", "[Open Settings]",
                    "Complete setup to start", "Automatic language detection"});
    press("Add key: OpenAI API key");
    EXPECT_EQ(world.model.selectedPage(), WindowPage::settings);
    world.model.setSelectedPage(WindowPage::dictation);
    press("Enable: Microphone");
    press("Enable: Accessibility");
    press("Open Settings: Enable keyboard access in Input Monitoring");
    EXPECT_EQ(world.permissions.openedPanes,
              (std::vector{PrivacyPane::microphone, PrivacyPane::accessibility,
                           PrivacyPane::inputMonitoring}));

    world.permissions.setMicrophone(MicrophoneAuthorization::authorized);
    world.scheduler.advance(2s);
    expectTogether(page(), {"Microphone", "Record only while you dictate", "Ready"});
    world.accessibility.trusted = true;
    world.scheduler.advance(2s);
    EXPECT_FALSE(page().contains("Enable keyboard access in Input Monitoring"));
    world.saveKey();
    EXPECT_FALSE(page().contains("Make it yours"));
    expectTogether(page(), {"Ready when you are", "Automatic language detection",
                            "Click a text field in any app, then use your shortcut. You can close "
                            "this window; Quorvi keeps running in the menu bar."});
}

TEST_F(MainWindowTest, TheSidebarSelectsThePageAndEndsTheChoiceOfAShortcut) {
    auto& sidebar = *window().findChild<QPushButton*>()->parentWidget();
    const auto lines = seen(sidebar);
    EXPECT_EQ(lines.mid(0, 4), (QStringList{"(Dictation: on)", "(History: off)", "(Insights: off)",
                                            "(Settings: off)"}));
    expectTogether(lines, {"Quorvi", "Your voice, in your words.", "Automatic language",
                           "Quorvi 0.1.0 · Native for Mac"});
    const std::pair<const char*, WindowPage> pages[] = {{"History", WindowPage::history},
                                                        {"Insights", WindowPage::insights},
                                                        {"Settings", WindowPage::settings},
                                                        {"Dictation", WindowPage::dictation}};
    for (const auto& [name, index] : pages) {
        world.model.beginShortcutCapture();
        press(name);
        EXPECT_EQ(world.model.selectedPage(), index);
        EXPECT_FALSE(world.model.isChoosingShortcut());
    }
    world.model.setSelectedPage(WindowPage::settings);
    EXPECT_TRUE(control<QPushButton>(window(), "Settings").isChecked());
}

TEST_F(MainWindowTest, ClosingEndsTheChoiceAndKeepsTheWindowWithItsSize) {
    window().resize(1000, 790);
    world.model.beginShortcutCapture();
    window().close();
    EXPECT_FALSE(world.window->isVisible());
    EXPECT_FALSE(world.model.isChoosingShortcut());
    EXPECT_EQ(world.quits, 0);
    world.window.reset();
    EXPECT_LE(window().size().width(), 1000);
    EXPECT_EQ(world.preferences.string("mainWindowSize"), "1000x790");
}

TEST_F(MainWindowTest, ShowsTheDictationUnderWayAndItsTranscript) {
    world.saveKey();
    window();
    world.beginDictation();
    world.scheduler.advance(67900ms);
    expectTogether(page(), {"1:07", "[Cancel]", "[Stop && insert]"});
    EXPECT_TRUE(page().contains("-[Change shortcut]"));
    press("Cancel");
    EXPECT_EQ(world.model.stage(), DictationStage::idle);
    EXPECT_FALSE(page().contains("[Stop && insert]"));
    EXPECT_FALSE(page().contains("Last transcript"));

    world.dictate("hello there");
    expectTogether(
        page(),
        {"Last transcript", "hello there", "[Copy]", "[Remember correction]", "[Clear transcript]",
         "This copy stays until Quorvi quits. Saved dictations are in History."});
    press("Copy");
    world.scheduler.advance(1s);
    EXPECT_EQ(world.pasteboard.text(), "hello there");
    press("Clear transcript");
    EXPECT_FALSE(page().contains("Last transcript"));
    expectTogether(
        page(), {"CLICK BELOW, THEN DICTATE", "Try it here", "{Hello, world. Καλημέρα, κόσμε.: }"});
}

TEST_F(MainWindowTest, TheSettingsStandInTheirOrder) {
    settings();
    const auto lines = page();
    qsizetype last = -1;
    for (const char* heading :
         {"Settings", "General", "Dictation", "Interaction", "Recording appearance", "Corrections",
          "Saved corrections", "Recognition", "OpenAI API key", "Account & sync", "App updates",
          "History & statistics", "Privacy"}) {
        const auto place = lines.indexOf(QString::fromUtf8(heading));
        EXPECT_GT(place, last) << heading;
        last = place;
    }
    expectTogether(lines, {"General", "(Launch Quorvi at login: off)",
                           "Quorvi will stay closed when you sign in."});
    expectTogether(lines, {"Start sound", "<Start sound: Classic>", "[Preview start]", "Stop sound",
                           "<Stop sound: Classic>", "[Preview stop]"});
}

TEST_F(MainWindowTest, TheShortcutIsChosenFromTheMenuOrByPressingIt) {
    settings();
    auto& menuButton = control<QPushButton>(window(), "Shortcut: Right ⌥");
    QStringList items;
    for (const auto* action : menuButton.menu()->actions())
        if (!action->isSeparator()) items << action->text();
    EXPECT_EQ(items, (QStringList{"Right Option ⌥", "Left Control ⌃", "Right Control ⌃",
                                  "Record custom shortcut…"}));
    menuButton.menu()->actions()[1]->trigger();
    EXPECT_EQ(world.model.shortcut(), Hotkey::leftControl);

    menuButton.menu()->actions().back()->trigger();
    EXPECT_TRUE(world.model.isChoosingShortcut());
    EXPECT_TRUE(page().contains("[Press a key…]"));
    world.localKeys.press(0, 0, "a");
    EXPECT_TRUE(page().contains(QString::fromStdString(say::unsuitableShortcut().english())));
    world.localKeys.press(96, 0, std::nullopt);
    EXPECT_EQ(world.model.shortcut().label, "F5");
    EXPECT_TRUE(page().contains("[F5]"));
}

TEST_F(MainWindowTest, SettingsFollowTheModelAndChangeIt) {
    settings();
    auto& model = control<QComboBox>(window(), "Model");
    const auto choose = [](QComboBox& picker, int index) {
        picker.setCurrentIndex(index);
        Q_EMIT picker.activated(index);
    };
    choose(model, 2);
    EXPECT_EQ(world.model.transcriptionModel(), TranscriptionModel::mini);
    world.model.setTranscriptionModel(TranscriptionModel::fourO);
    EXPECT_EQ(model.currentIndex(), 1);
    choose(control<QComboBox>(window(), "Stop sound"), 4);
    EXPECT_EQ(world.model.soundStyle(RecordingCue::stop), RecordingSoundStyle::silent);
    choose(control<QComboBox>(window(), "Shortcut mode"), 1);
    EXPECT_EQ(world.model.mode(), DictationMode::toggle);
    auto& words = control<QLineEdit>(window(), "Names or terms you often use (optional)");
    world.model.setVocabulary("Ada");
    EXPECT_EQ(words.text(), "Ada");
    world.saveKey();
    world.beginDictation();
    EXPECT_FALSE(model.isEnabled());
    EXPECT_FALSE(words.isEnabled());
    EXPECT_FALSE(control<QPushButton>(window(), "Reset dictation").isEnabled());
    EXPECT_FALSE(control<QLineEdit>(window(), "OpenAI API key").isEnabled());
}

TEST_F(MainWindowTest, TheKeyIsStoredRemovedAndNeverShown) {
    settings();
    auto& field = control<QLineEdit>(window(), "OpenAI API key");
    auto& save = control<QPushButton>(window(), "Save");
    EXPECT_EQ(field.placeholderText(), "Paste your API key");
    EXPECT_EQ(field.echoMode(), QLineEdit::Password);
    field.setText("  \n ");
    EXPECT_FALSE(save.isEnabled());
    field.setText("two words");
    save.click();
    EXPECT_FALSE(world.model.hasKey());
    EXPECT_TRUE(page().contains(QString::fromStdString(world.model.keyMessage().english())));
    EXPECT_EQ(field.text(), "two words") << "to be mended";
    field.setText("sk-good");
    Q_EMIT field.returnPressed();
    world.scheduler.settle();
    EXPECT_TRUE(world.model.hasKey());
    EXPECT_EQ(field.text(), QString());
    EXPECT_EQ(field.placeholderText(), "Enter a replacement key");
    EXPECT_TRUE(page().contains("Saved"));
    press("Remove key");
    EXPECT_FALSE(world.model.hasKey());
    EXPECT_FALSE(page().contains("Saved"));
    // The store refuses the copy; the switch goes back.
    press("Sync API key through iCloud Keychain");
    world.scheduler.settle();
    EXPECT_FALSE(
        control<QAbstractButton>(window(), "Sync API key through iCloud Keychain").isChecked());
}

TEST_F(MainWindowTest, RulesSayWhereTheyComeFromAndWhyTheyAreRefused) {
    for (const auto rules = world.corrections.rules().rules(); const auto& rule : rules)
        world.corrections.remove(rule.id);
    settings();
    EXPECT_TRUE(page().contains(
        "No saved corrections. Add the phrase Quorvi writes and the spelling you want."));
    // Presses the button, fills the editor, and saves.
    const auto save = [&](const char* opener, const char* phrase, const char* replacement) {
        press(opener);
        control<QLineEdit>(window(), "Quorvi writes").setText(phrase);
        control<QLineEdit>(window(), "Replace with").setText({});
        EXPECT_FALSE(control<QPushButton>(window(), "Save correction").isEnabled());
        control<QLineEdit>(window(), "Replace with").setText(replacement);
        press("Save correction");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    save("Add correction", "rm", "Russet Miner");
    world.corrections.save(
        {.original = "hallo", .replacement = "hello", .learnedAutomatically = true});
    expectTogether(page(),
                   {"hallo", "hello", "Learned from an edit", "(Enable correction: on)", "[Edit]",
                    "[Delete correction for hallo]", "rm", "Russet Miner", "Saved by you"});
    save("Edit correction for hallo", "hallo", "Hello");
    expectTogether(page(), {"hallo", "Hello", "Saved by you"});
    save("Add correction", "  HALLO ", "x");
    EXPECT_TRUE(
        seen(control<CorrectionEditor>(window(), ""))
            .contains("That phrase already has a correction. Edit its existing rule instead."));
    press("Cancel");
    press("Learn from my edits in other apps");
    EXPECT_TRUE(page().contains("Automatic learning is off."));
}

TEST_F(MainWindowTest, TheEditorPreviewsTheTranscript) {
    window();
    CorrectionEditor* editor = new CorrectionEditor(
        world.corrections, {}, QStringLiteral("We met at Russet Miner."), &window());
    editor->show();
    const auto write = [&](const char* phrase, const QString& replacement) {
        control<QLineEdit>(*editor, "Quorvi writes").setText(QString::fromUtf8(phrase));
        control<QLineEdit>(*editor, "Replace with").setText(replacement);
        return seen(*editor);
    };
    expectTogether(write("russet  miner", "russetmanor"), {"Preview", "We met at russetmanor."});
    EXPECT_TRUE(write("elsewhere", "x")
                    .contains("That phrase does not match this transcript. The "
                              "rule will still apply to future matches."));
    const auto tooLong = write("elsewhere", QString(161, QLatin1Char('x')));
    EXPECT_FALSE(control<QPushButton>(*editor, "Save correction").isEnabled());
    EXPECT_TRUE(tooLong.join(QString()).contains("160"));
    editor->close();
}

TEST_F(MainWindowTest, TheSyncSectionFollowsTheSync) {
    settings();
    auto& now = control<QPushButton>(window(), "Sync now");
    EXPECT_FALSE(now.isEnabled());
    expectTogether(page(), {"Sync paused on this Mac", "-[Sync now]"});
    press("Sync with my Apple Account");
    EXPECT_TRUE(world.sync.enabled());
    now.click();
    EXPECT_EQ(world.sync.passes, 1);
    world.sync.set({true, say::syncRunning(), 1234, Date{817'000'000}, true});
    EXPECT_FALSE(now.isEnabled());
    const auto last = page().filter("Last synced ");
    ASSERT_EQ(last.size(), 1);
    EXPECT_TRUE(last[0].endsWith(" · 1,234 pending")) << last[0].toStdString();
}

// Every text must have the room it needs, in every state and language.
TEST(MainWindowLanguagesTest, NothingIsCutOff) {
    for (auto language : {QLocale::English, QLocale::German, QLocale::Greek}) {
        const auto translation = installTranslation(QLocale(language));
        WindowWorld world;
        world.withdrawEverything();
        world.dictate("hello");
        world.corrections.save({.original = std::string(150, 'W'), .replacement = "x"});
        for (const auto page : allWindowPages) {
            world.model.setSelectedPage(page);
            for (const QSize size : {QSize(940, 800), QSize(900, 740)}) {
                world.show().resize(size);
                for (int round = 0; round < 3; ++round) QCoreApplication::processEvents();
                const auto clipped = SeenWidgets(*world.window).clipped();
                EXPECT_TRUE(clipped.isEmpty()) << clipped.join(QLatin1Char('\n')).toStdString();
            }
        }
    }
}

TEST(MainWindowLanguagesTest, TextsAndTheModelsMessagesAreTranslated) {
    const auto translation = installTranslation(QLocale(QLocale::German));
    WindowWorld world;
    world.model.setSelectedPage(WindowPage::settings);
    const auto lines = SeenWidgets(world.show()).lines();
    EXPECT_TRUE(lines.contains(QStringLiteral("Einstellungen")));
    EXPECT_TRUE(lines.contains(QStringLiteral("Bereit, aus deinem nächsten Diktat zu lernen.")));
    EXPECT_TRUE(lines.contains(QStringLiteral("<Ton am Anfang: Klassisch>")));
    for (const auto& [said, shown] :
         {std::pair{"Paste sent to 100 %2 Mail.", "Eingesetzt in: 100 %2 Mail."},
          {"The speech service did not answer in time. Please try again.",
           "Der Sprachdienst hat nicht rechtzeitig geantwortet. Bitte versuche es noch einmal."},
          {"12 changes waiting to sync", "12 Änderungen warten auf den Abgleich"},
          {"Quorvi 2 is available, but it needs version 13 of your system or a later one.",
           "Quorvi 2 ist verfügbar, braucht aber Version 13 deines Systems oder eine spätere."},
          {"a → b", "a → b"}})
        EXPECT_EQ(modelText(said).toStdString(), shown);
}

TEST_F(MainWindowTest, TabGoesThroughThePagesAsTheyAreRead) {
    world.saveKey();
    settings();
    // Rules that come while the page is open stand among those that were there.
    for (const char* phrase : {"a", "b"}) world.corrections.save({phrase, phrase, "x"});
    for (WindowPage shown : {WindowPage::dictation, WindowPage::settings}) {
        world.model.setSelectedPage(shown);
        window();
        QCoreApplication::processEvents();
        const SeenWidgets all(*world.window);
        EXPECT_GE(all.stopsAsRead().size(), 4) << "one page of the sidebar, and the controls";
        EXPECT_EQ(all.stopsOfTab().join(QLatin1Char('\n')).toStdString(),
                  all.stopsAsRead().join(QLatin1Char('\n')).toStdString());
    }
}

TEST(SymbolsTest, EachIsDrawnAndTinted) {
    for (const char* name : {"waveform", "trash", "checkmark.circle.fill", "text.badge.plus"}) {
        const auto image = symbolPixmap(name, Qt::red, 24, 2).toImage();
        ASSERT_EQ(image.size(), QSize(48, 48)) << name;
        bool red = false;
        for (int y = 0; y < 48; ++y)
            for (int x = 0; x < 48; ++x) red = red || image.pixelColor(x, y) == QColor(Qt::red);
        EXPECT_TRUE(red) << name << ": is Qt's SVG plug-in installed?";
    }
    EXPECT_TRUE(symbolIcon("no such symbol").isNull());
}

TEST(ColorsTest, TextsCanBeReadInEveryPalette) {
    for (const auto& [name, desktop] : palettes()) {
        const auto palette = refined(desktop);
        for (auto surface : {ColorRole::page, ColorRole::card, ColorRole::sidebar})
            for (auto text : {ColorRole::ink, ColorRole::secondary, ColorRole::accent})
                EXPECT_GE(contrast(color(text, palette), color(surface, palette)), 4.4)
                    << name.toStdString() << ' ' << static_cast<int>(text) << " on "
                    << static_cast<int>(surface);
        EXPECT_GE(contrast(color(ColorRole::onAccent, palette), color(ColorRole::accent, palette)),
                  4.5);
        EXPECT_EQ(refined(palette), palette) << name.toStdString();
    }
}

}  // namespace
}  // namespace quorvi::test

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QCoreApplication::setApplicationVersion(QStringLiteral("0.1.0"));
    quorvi::installDesign(application);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
