#include "Quorvi/ui/window/MainWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

#include "Quorvi/ui/indicator/MicrophoneLevel.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/translations/Translations.h"
#include "tests/ui/WindowTest.h"

namespace quorvi::test {
namespace {

class MainWindowTest : public WindowTest {};

TEST_F(MainWindowTest, AnotherPageOrClosingEndsTheCaptureAndTheSizeIsKept) {
    world.show().resize(1000, 790);
    world.model.beginShortcutCapture();
    window().press("History");
    EXPECT_FALSE(world.model.isChoosingShortcut());
    world.model.beginShortcutCapture();
    world.window->close();
    EXPECT_FALSE(world.window->isVisible());
    EXPECT_FALSE(world.model.isChoosingShortcut());
    EXPECT_EQ(world.quits, 0);
    world.window.reset();
    EXPECT_LE(world.show().width(), 1000);
    EXPECT_EQ(world.preferences.string("mainWindowSize"), "1000x790");
}

TEST_F(MainWindowTest, ShowsTheCurrentDictationAndTheLastTranscript) {
    world.saveKey();
    page();
    world.beginDictation();
    world.scheduler.advance(67900ms);
    expectInOrder(page(), {"1:07", "[Cancel]", "[Stop && insert]", "-[Change shortcut]"});
    page().press("Cancel");
    world.dictate("hello there");
    expectInOrder(page(), {"Last transcript", "hello there"});
    page().press("Copy");
    world.scheduler.advance(1s);
    EXPECT_EQ(world.pasteboard.text(), "hello there");
    page().press("Clear transcript");
    EXPECT_FALSE(page().has("Last transcript"));
}

TEST_F(MainWindowTest, AFailedDictationIsTriedAgainOrDiscarded) {
    world.saveKey();
    for (const auto* button : {"Try again", "Discard the recording"}) {
        world.service.status = 500;
        world.dictate("hello there");
        expectInOrder(page(), {"You can try again for 10 minutes.", "Try again"});
        world.service.status = 200;
        page().press(button);
        world.scheduler.advance(2s);
        EXPECT_FALSE(page().has("Try again"));
        EXPECT_EQ(page().has("hello there"), world.model.stage() == DictationStage::success);
        world.model.clearTranscript();
    }
}

TEST_F(MainWindowTest, TheShortcutMenuOffersPresetsAndACapture) {
    const auto actions =
        open(WindowPage::settings).control<QPushButton>("Shortcut: Right ⌥").menu()->actions();
    actions[1]->trigger();
    EXPECT_EQ(world.model.shortcut(), Hotkey::leftControl);
    actions.back()->trigger();
    world.localKeys.press(0, 0, "a");
    EXPECT_TRUE(page().has("Use Left or Right Control, Right Option, a function key"));
}

TEST(DesktopsShortcut, IsChosenFromWhatTheDesktopCanDo) {
    WindowWorld world(true);
    world.capabilities = {
        .isWayland = true, .hasCustomShortcuts = true, .hasIbus = true, .hasRemoteDesktop = true};
    world.saveKey();
    world.desktopShortcut.become(
        {.hasRelease = false, .hasLoneModifiers = false, .needsListing = true});
    world.keyboard.isRefused = true;
    world.keyboard.invalidate();
    world.model.refreshPermissions();
    world.model.setSelectedPage(WindowPage::dictation);
    EXPECT_TRUE(Seen(world.show()).has("This desktop reports no lone modifiers"));
    world.model.start();
    world.scheduler.advance(1s);
    EXPECT_TRUE(world.model.canCancel()) << "a command needs no shortcut";
    world.model.cancel();
    world.model.setSelectedPage(WindowPage::settings);
    world.settle();
    const Seen settings(world.show());
    EXPECT_TRUE(settings.has("Not offered by this desktop: zwlr_layer_shell_v1."));
    EXPECT_TRUE(settings.has("does not report when a key goes up"));
    world.model.beginShortcutCapture();
    world.localKeys.changeFlags(keyCode::rightControl,
                                modifierFlag::control | modifierFlag::rightControl);
    world.localKeys.changeFlags(keyCode::rightControl, 0);
    EXPECT_TRUE(world.model.isChoosingShortcut());
    world.model.endShortcutCapture();
    settings.control<QPushButton>("Shortcut: Right ⌥").menu()->actions()[0]->trigger();
    EXPECT_EQ(world.model.shortcut(), Hotkey::f9);
    EXPECT_TRUE(settings.has("Let Quorvi add the shortcut"));
    settings.press("Add the shortcut to the desktop's settings");
    EXPECT_FALSE(world.model.shortcutProblem());
    world.desktopShortcut.become({.takenBy = "Lock the screen"});
    EXPECT_TRUE(settings.has("uses this shortcut for “Lock the screen”"));
    settings.press("Press keys to paste");
    EXPECT_TRUE(Seen(world.show()).has("The desktop is asking you."));
    world.keyConsent.become(KeyConsent::State::refused);
    EXPECT_TRUE(Seen(world.show()).has("The desktop does not allow it"));
    EXPECT_FALSE(settings.control<QCheckBox>("Press keys to paste").isChecked());
}

TEST(DesktopsShortcut, IsACommandWhereTheDesktopHasNone) {
    WindowWorld world(true);
    world.desktopShortcut.become({.isOffered = false});
    world.model.setSelectedPage(WindowPage::settings);
    const Seen settings(world.show());
    EXPECT_TRUE(settings.has("bind a key to the command “quorvi toggle”"));
    EXPECT_FALSE(settings.has("Shortcut mode"));
    EXPECT_FALSE(settings.has("This desktop reports no lone modifiers"));
}

TEST_F(MainWindowTest, SettingsFollowTheModelAndChangeIt) {
    const auto settings = open(WindowPage::settings);
    settings.choose("Model", 2);
    EXPECT_EQ(world.model.transcriptionModel(), TranscriptionModel::mini);
    world.model.setTranscriptionModel(TranscriptionModel::fourO);
    EXPECT_EQ(settings.control<QComboBox>("Model").currentIndex(), 1);
    settings.press("Play sounds");
    EXPECT_FALSE(world.model.settings().get(setting::soundCuesEnabled));
    settings.choose("Stop sound", 4);
    EXPECT_EQ(world.model.soundStyle(RecordingCue::stop), RecordingSoundStyle::silent);
    const auto* words = "Names or terms you often use (optional)";
    world.model.setVocabulary("Ada");
    auto& vocabulary = settings.control<QLineEdit>(words);
    EXPECT_EQ(vocabulary.text(), "Ada");
    world.model.setVocabulary(std::string(1200, 'a'));
    vocabulary.insert("b");
    vocabulary.textEdited(vocabulary.text());
    EXPECT_EQ(vocabulary.text(), QString(1200, 'a')) << "no more than the settings keep";
    world.saveKey();
    world.beginDictation();
    for (const auto* name : {"Model", words, "Reset dictation", "OpenAI API key"})
        EXPECT_FALSE(settings.control<QWidget>(name).isEnabled()) << name;
}

TEST_F(MainWindowTest, TheSpeechServiceIsChosenAndTriedOut) {
    page().press("Use the offline recogniser");
    EXPECT_TRUE(world.model.ready());
    const auto settings = open(WindowPage::settings);
    EXPECT_TRUE(page().has("Recordings stay on this computer"));
    settings.choose("Speech service", 1);
    page().press("The service needs an API key");
    EXPECT_FALSE(page().has("Paste your API key"));
    auto& address = page().control<QLineEdit>("Address");
    address.setText("http://one.example");
    Q_EMIT address.editingFinished();
    EXPECT_FALSE(world.model.ready());
    const auto test = [this](Duration time) {
        page().press("Test the speech service");
        world.scheduler.advance(time);
    };
    test(1ms);
    EXPECT_TRUE(page().has("must be reached over an encrypted connection"));
    address.setText("https://one.example");
    Q_EMIT address.editingFinished();
    test(1s);
    EXPECT_TRUE(page().has("The speech service answered."));
    test(1ms);
    EXPECT_TRUE(page().has("Waiting for the service…"));
    page().press("Cancel the test");
    world.scheduler.advance(1ms);
    EXPECT_TRUE(page().has("[Test]"));
    EXPECT_FALSE(page().has("The speech service answered."));
    EXPECT_TRUE(world.model.ready());
}

TEST_F(MainWindowTest, SectionsOfTheSettingsAreListedAndASearchShowsWhatMatches) {
    open(WindowPage::settings);
    EXPECT_TRUE(window().has("(General: on) | (Dictation: off)")) << window().text();
    for (const std::string section : {"Privacy", "History & statistics", "Recording appearance"}) {
        window().press(("Section: " + section).c_str());
        EXPECT_TRUE(window().has(("(" + section + ": on)").c_str())) << window().text();
    }
    auto& query = page().control<QLineEdit>("Search settings");
    query.setText("ÓPENAI");
    EXPECT_TRUE(page().has("Speech service"));
    EXPECT_FALSE(page().has("Launch Quorvi at login"));
    EXPECT_TRUE(window().has("(API key: off)"));
    EXPECT_FALSE(window().has("(General: "));
    query.setText("no such words");
    EXPECT_TRUE(page().has("No setting matches."));
    query.clear();
    EXPECT_TRUE(page().has("Launch Quorvi at login"));
}

TEST_F(MainWindowTest, TheMicrophoneIsChosenAndHeardOnlyWhileItsLevelIsSeen) {
    auto& input = world.microphone;
    page();
    world.scheduler.advance(100ms);
    EXPECT_TRUE(part<MicrophoneLevel>(*world.window)->isMoving());
    world.saveKey();
    EXPECT_EQ(input.levelsOpen, 0);
    input.setMicrophones({{"built-in", "Built-in Audio"}, {"headset", "Headset"}});
    open(WindowPage::settings).choose("Microphone", 2);
    EXPECT_TRUE(page().has("In use: Headset"));
    EXPECT_EQ(input.preferred, "headset");
    EXPECT_EQ(input.levelsOpen, 1);
    world.beginDictation();
    EXPECT_EQ(input.levelsOpen, 0);
    world.model.cancel();
    EXPECT_EQ(input.levelsOpen, 1);
    input.setMicrophones({{"built-in", "Built-in Audio"}});
    EXPECT_TRUE(page().has("<Microphone: Headset (not connected)>"));
    EXPECT_TRUE(page().has("In use: Built-in Audio"));
    for (const auto sentence : {Sentence::microphoneMissing, Sentence::dictatingInto}) {
        world.beginDictation();
        EXPECT_TRUE(world.model.message().is(sentence));
        world.model.cancel();
    }
    world.window->close();
    EXPECT_EQ(input.levelsOpen, 0);
}

TEST_F(MainWindowTest, ARefusedKeyCanBeMendedAndAKeyIsNeverShown) {
    const auto settings = open(WindowPage::settings);
    auto& field = settings.control<QLineEdit>("OpenAI API key");
    EXPECT_EQ(field.echoMode(), QLineEdit::Password);
    field.setText("two words");
    settings.press("Save");
    EXPECT_TRUE(page().has("Enter a valid API key without spaces."));
    EXPECT_EQ(field.text(), "two words");
    field.setText("sk-good");
    const auto& window = world.show();
    Q_EMIT field.returnPressed();
    EXPECT_TRUE(window.isWorking()) << "a window closed now would lose the key";
    world.scheduler.settle();
    EXPECT_FALSE(window.isWorking());
    EXPECT_TRUE(world.model.hasKey());
    EXPECT_EQ(field.text(), QString());
}

TEST_F(MainWindowTest, RulesShowTheirOriginAndDuplicatesAreRefused) {
    for (const auto rules = world.corrections.rules().rules(); const auto& rule : rules)
        world.corrections.remove(rule.id);
    EXPECT_TRUE(open(WindowPage::settings).has("No saved corrections."));
    const auto save = [&](const char* opener, const char* phrase, const char* replacement) {
        window().press(opener);
        const Seen editor(*world.window->findChild<QDialog*>());
        editor.control<QLineEdit>("Quorvi writes").setText(phrase);
        editor.control<QLineEdit>("Replace with").setText({});
        EXPECT_FALSE(editor.control<QPushButton>("Save correction").isEnabled());
        editor.control<QLineEdit>("Replace with").setText(replacement);
        editor.press("Save correction");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    world.corrections.save(
        {.original = "hallo", .replacement = "hello", .learnedAutomatically = true});
    EXPECT_TRUE(page().has("hallo | hello | Learned from an edit"));
    save("Edit correction for hallo", "hallo", "Hello");
    EXPECT_TRUE(page().has("hallo | Hello | Saved by you"));
    save("Add correction", "  HALLO ", "x");
    EXPECT_TRUE(
        Seen(*world.window->findChild<QDialog*>()).has("That phrase already has a correction."));
}

TEST_F(MainWindowTest, TheSyncSectionShowsProgressAndPendingChanges) {
    const auto settings = open(WindowPage::settings);
    settings.press("Sync with my Apple Account");
    settings.press("Sync now");
    EXPECT_EQ(world.sync.passes, 1);
    world.sync.set({true, say::syncRunning(), 1234, Date{817'000'000}, true});
    EXPECT_TRUE(page().has("-[Sync now]"));
    EXPECT_TRUE(page().has(" · 1,234 pending"));

    // What somebody without access can do depends on where the data are kept.
    for (const auto& [address, place, remedy] :
         {std::tuple("", "Only this computer", "Check disk space"),
          {"folder:/srv/me", "Shared folder: /srv/me", "choose another folder"},
          {"postgresql://ada@db.example/q?x=1", "Server: db.example/q |",
           "enter the password again"}}) {
        world.preferences.set("cloudDatabase", std::string(address));
        world.sync.set({true, say::syncSignIn()});
        EXPECT_TRUE(page().has(place)) << page().text();
        EXPECT_TRUE(page().has(remedy)) << page().text();
    }
}

TEST_F(MainWindowTest, SettingsFollowTheDesktopAndTheEnvironment) {
    world.missingSettings = PrivacyPane::accessibility;
    world.isKeyGiven = true;
    EXPECT_EQ(open(WindowPage::settings).count("[Manage]"), 1);
    EXPECT_TRUE(page().has("QUORVI_API_KEY"));
    page().press("Manage Microphone");
    EXPECT_EQ(world.permissions.openedPanes, std::vector{PrivacyPane::microphone});
}

TEST_F(MainWindowTest, ThePlaceOfTheSharedDataIsChosenAndChecked) {
    const auto settings = open(WindowPage::settings);
    const auto cloud = [this] { return world.preferences.string("cloudDatabase"); };
    const auto enter = [this](const char* field, const char* text) {
        page().control<QLineEdit>(field).setText(text);
    };
    settings.choose("Where your computers share the data", 1);
    page().press("Use this folder");
    EXPECT_TRUE(page().has("has no absolute path"));
    enter("Folder", "/srv/me");
    EXPECT_EQ(cloud(), std::nullopt) << "not before the button is pressed";
    page().press("Use this folder");
    EXPECT_EQ(cloud(), "folder:/srv/me");

    page().choose("Where your computers share the data", 2);
    enter("Server", "db.example/q");
    enter("User", "ada");
    enter("Password", "secret");
    enter("Certificate of the server's authority (optional)", "/etc/own ca.pem");
    world.cloud.keyringIsOpen = false;
    page().press("Use this server");
    EXPECT_TRUE(page().has("The keyring did not take the password"));
    EXPECT_EQ(cloud(), "folder:/srv/me");
    world.cloud.keyringIsOpen = true;
    page().press("Use this server");
    EXPECT_EQ(cloud(), "postgresql://ada@db.example/q?sslrootcert=/etc/own%20ca.pem");
    EXPECT_EQ(world.cloud.stored, *cloud() + " secret");
    EXPECT_FALSE(page().has("secret"));
    for (const auto* field : {"User", "Certificate of the server's authority (optional)"})
        EXPECT_NE(page().control<QLineEdit>(field).text(), QString());

    const auto check = [this](Duration time) {
        page().press("Check where the data are shared");
        world.scheduler.advance(time);
    };
    check(1s);
    EXPECT_TRUE(page().has("It works"));
    world.cloud.result = say::syncSignIn();
    check(1ms);
    EXPECT_TRUE(page().has("reading it back"));
    page().press("Cancel the check");
    world.scheduler.advance(1ms);
    EXPECT_FALSE(page().has("does not let you in"));
    check(1s);
    EXPECT_TRUE(page().has("does not let you in"));
    page().choose("Where your computers share the data", 0);
    page().press("Keep the data on this computer only");
    EXPECT_EQ(cloud(), std::nullopt);
}

TEST_F(MainWindowTest, TheComputersOfAFolderAreNamedAndRemoved) {
    world.cloud.known = {{"1111", "desk", Date{817'000'000}, true},
                         {"22222222-3333", "", Date{816'000'000}, false}};
    open(WindowPage::settings);
    EXPECT_TRUE(page().has("desk (this computer)"));
    page().control<QLineEdit>("Name of this computer").setText(" Adas Rechner ");
    page().press("Rename this computer");
    EXPECT_TRUE(page().has("Adas Rechner (this computer)"));
    page().press("Remove 22222222");
    Seen(*world.window->findChild<QMessageBox*>()).press("Remove");
    EXPECT_FALSE(page().has("22222222"));
}

TEST_F(MainWindowTest, TabFollowsTheReadingOrder) {
    world.saveKey();
    open(WindowPage::settings);
    // Rules that are added while the page is open go between the existing ones.
    for (const char* phrase : {"a", "b"}) world.corrections.save({phrase, phrase, "x"});
    for (const auto index : {WindowPage::dictation, WindowPage::settings}) {
        open(index);
        const auto all = window();
        EXPECT_GE(all.stopsAsRead().size(), 4) << "an entry of the sidebar, and the controls";
        EXPECT_EQ(all.stopsOfTab().join(QLatin1Char('\n')).toStdString(),
                  all.stopsAsRead().join(QLatin1Char('\n')).toStdString());
    }
}

}  // namespace
}  // namespace quorvi::test
