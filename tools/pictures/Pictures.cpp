// Draws the window's pages in every state and theme, from fixed data, to PNG files in a folder:
//   quorvi-pictures FOLDER [SUFFIX]
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QScrollArea>
#include <cstdio>

#include "Quorvi/ui/corrections/CorrectionEditor.h"
#include "Quorvi/ui/design/Colors.h"
#include "Quorvi/ui/design/DesignStyle.h"
#include "Quorvi/ui/history/HistoryPage.h"
#include "Quorvi/ui/history/HistoryRow.h"
#include "Quorvi/ui/settings/SettingsPage.h"
#include "Quorvi/ui/translations/Translations.h"
#include "Quorvi/ui/updates/UpdateWindow.h"
#include "tests/support/ui/Palettes.h"
#include "tests/support/ui/WindowWorld.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

class Album {
public:
    Album(QString folder, QString suffix)
        : folder_(std::move(folder)), suffix_(std::move(suffix)) {}

    void setTheme(const QString& theme) { theme_ = theme; }

    void take(QWidget& widget, const QString& name) {
        QCoreApplication::processEvents();
        if (name.isEmpty()) return;
        const QString file =
            folder_ + QLatin1Char('/') + name + QLatin1Char('-') + theme_ + suffix_ + ".png";
        widget.grab().save(file);
        std::printf("%s\n", qPrintable(file));
    }

    // As high as the content, so that nothing needs scrolling.
    void takeWhole(MainWindow& window, const QString& name) {
        // A window gets its width some time after it is shown.
        for (int round = 0; round < 3; ++round) {
            QCoreApplication::processEvents();
            for (auto* page : window.findChildren<QScrollArea*>()) {
                if (!page->isVisible()) continue;
                auto* content = page->widget();
                window.resize(940, qMax(800, content->heightForWidth(page->viewport()->width())));
            }
        }
        take(window, name);
        window.resize(940, 800);
    }

private:
    QString folder_;
    QString suffix_;
    QString theme_;
};

void fillCorrections(CorrectionStore& store) {
    store.save({.original = "Lorem Ypsum", .replacement = "Lorem Ipsum", .isEnabled = false});
    store.save({.original = "καλιμερα", .replacement = "Καλημέρα", .learnedAutomatically = true});
    store.save({.original = "שלום עולם", .replacement = "שלום, עולם!"});
    store.save({.original = "a phrase that is so long that it takes more than a single line of the "
                            "list and has to go on below",
                .replacement = "A Phrase That Is So Long That It Takes More Than A Single Line"});
    store.save({.original = "Kunigunde", .replacement = "Cunégonde"});
}

void dictationPages(Album& album) {
    {
        WindowWorld world;
        world.withdrawEverything();
        album.takeWhole(world.show(), "dictation-setup");
        album.take(*world.window, "dictation-setup-top");
        world.permissions.setMicrophone(MicrophoneAuthorization::authorized);
        world.saveKey();
        album.takeWhole(world.show(), "dictation-setup-partly");
        world.window->setTrayMissing(true);
        album.take(*world.window, "dictation-no-tray");
    }
    WindowWorld world;
    world.saveKey();
    album.takeWhole(world.show(), "dictation-ready");
    world.beginDictation();
    world.scheduler.advance(7900ms);
    album.takeWhole(world.show(), "dictation-recording");
    world.model.cancel();
    world.dictate(
        "Hello, world. Καλημέρα, κόσμε. This is what I said, and it is long enough to need "
        "a second line on the card, as most dictations do.");
    album.takeWhole(world.show(), "dictation-transcript");
    world.service.status = 429;
    world.dictate("");
    album.takeWhole(world.show(), "dictation-failed");
    world.service.status = 200;
    world.dictate("שלום עולם, זהו משפט שנכתב מימין לשמאל.");
    world.model.armInsertionTest();
    world.scheduler.advance(2500ms);
    album.takeWhole(world.show(), "dictation-test-right-to-left");
    world.model.cancel();
    world.model.beginShortcutCapture();
    album.takeWhole(world.show(), "dictation-choosing");
}

void settingsPages(Album& album) {
    {
        WindowWorld world;
        world.withdrawEverything();
        world.model.setSelectedPage(WindowPage::settings);
        album.takeWhole(world.show(), "settings-empty");
        album.take(*world.window, "settings-top");
    }
    {
        WindowWorld world;
        world.saveKey();
        fillCorrections(world.corrections);
        world.loginService.current = LoginItemStatus::requiresApproval;
        world.model.setSelectedPage(WindowPage::settings);
        world.model.saveKey("sk-new").start();
        world.microphone.setMicrophones(
            {{"built-in", "Built-in Audio Analog Stereo"}, {"headset", "Headset"}});
        world.model.microphone().choose({"headset", "Headset"});
        world.model.setVocabulary("Quorvi, Ada Lovelace, Θεσσαλονίκη");
        world.sync.set({true, say::syncRunning(), 12, Date{817'000'000}, true});
        world.show();
        world.scheduler.advance(100ms);
        album.takeWhole(world.show(), "settings-full");
        world.model.beginShortcutCapture();
        album.takeWhole(world.show(), "settings-choosing");
        world.model.endShortcutCapture();
        world.beginDictation();
        album.takeWhole(world.show(), "settings-recording");
    }
    {
        WindowWorld world;
        auto& choice = world.model.speechService().choice();
        choice.choose(SpeechServiceKind::other);
        choice.setOtherAddress("https://speech.example.org");
        world.model.microphone().choose({"usb", "Family 17h Audio Controller Digital Microphone"});
        world.model.setSelectedPage(WindowPage::settings);
        album.takeWhole(world.show(), "settings-other-service");
        choice.choose(SpeechServiceKind::offline);
        album.takeWhole(world.show(), "settings-offline");
        for (auto* page : world.window->findChildren<QWidget*>())
            if (dynamic_cast<SettingsPage*>(page))
                page->findChild<QLineEdit*>()->setText(QStringLiteral("api"));
        world.settle();
        album.take(*world.window, "settings-search");
    }
    {
        WindowWorld world;
        world.saveKey();
        world.cloud.known = {{"1", "desk", Date{817'000'000}, true},
                             {"2", "The laptop in the kitchen", Date{816'000'000}, false},
                             {"00000003-1", "", Date{700'000'000}, false}};
        world.cloud.result = say::syncSignIn();
        world.sync.set({true, say::syncUpToDate(), 0, Date{817'000'000}, false});
        world.model.setSelectedPage(WindowPage::settings);
        world.preferences.set("cloudDatabase", std::string("folder:/home/ada/Sync/Quorvi"));
        album.takeWhole(world.show(), "settings-shared-folder");
        world.preferences.set("cloudDatabase",
                              std::string("postgresql://ada@db.example.org/quorvi"));
        world.cloud.known.clear();
        world.sync.set({true, say::syncSignIn()});
        album.takeWhole(world.show(), "settings-server");
    }
    {
        WindowWorld world(true);
        world.saveKey();
        world.capabilities = {.isWayland = true, .hasCustomShortcuts = true, .hasIbus = true};
        world.keyboard.isRefused = true;
        world.keyboard.invalidate();
        world.desktopShortcut.become(
            {.hasRelease = false, .hasLoneModifiers = false, .needsListing = true});
        album.takeWhole(world.show(), "dictation-wayland");
        world.model.setShortcut(Hotkey::f9);
        world.model.setSelectedPage(WindowPage::settings);
        album.takeWhole(world.show(), "settings-wayland");
    }
    WindowWorld world;
    world.preferences.setBytes("savedTextCorrections", bytesOf("not a list"));
    CorrectionStore locked(world.preferences, world.scheduler);
    MainWindow window({world.model,
                       locked,
                       world.services().history,
                       world.sync,
                       world.cloud,
                       world.keys,
                       world.loginItem,
                       world.updater,
                       world.preferences,
                       world.scheduler,
                       {}});
    world.model.saveKey("two words").start();
    world.model.setSelectedPage(WindowPage::settings);
    window.present();
    world.settle();
    album.takeWhole(window, "settings-error");
}

void takePage(Album& album, WindowWorld& world, WindowPage page, const QString& name) {
    world.model.setSelectedPage(page);
    world.show();
    world.settle();
    album.takeWhole(*world.window, name);
}

// A month of dictations, in several programs and scripts.
void fillHistory(WindowWorld& world) {
    const char* const texts[] = {
        "Please send the draft tomorrow, and thank Maria for the numbers.",
        "Καλημέρα, στέλνω την αναφορά μέχρι το απόγευμα.",
        "Remember to book the table for eight.",
        "שלום, נפגש מחר בבוקר.",
        "The quarterly report is ready. I have gone through the figures with the team, and we "
        "agree "
        "that the second half of the year looks better than we had expected. There are three "
        "things "
        "left to decide: the date of the review, who presents it, and whether we invite the people "
        "from the other office, who have asked for it twice already. I suggest that we settle all "
        "of "
        "it in one short meeting on Thursday.",
    };
    const char* const apps[] = {"Mail", "Text Editor", "Firefox", "Notes"};
    const double now = world.scheduler.date().secondsSinceReferenceDate;
    for (int i = 60; i >= 0; --i)
        world.history.record(
            texts[i % 5], 4 + i % 9, apps[i % 4 * (i % 3 != 0)], "automatic",
            DictationCostEstimate::of(allTranscriptionModels[static_cast<std::size_t>(i % 3)]),
            {now - i * (i < 8 ? 2'500.0 : 41'000.0) - 60});
}

void historyPages(Album& album) {
    {
        WindowWorld world;
        world.settle();
        takePage(album, world, WindowPage::history, "history-empty");
        takePage(album, world, WindowPage::insights, "insights-empty");
        world.history.setKeepTranscripts(false);
        takePage(album, world, WindowPage::history, "history-paused");
    }
    {
        WindowWorld world;
        world.settle();
        fillHistory(world);
        takePage(album, world, WindowPage::history, "history-full");
        album.take(*world.window, "history-top");
        takePage(album, world, WindowPage::insights, "insights-full");
        album.take(*world.window, "insights-top");
        // Found by type, since its text depends on the language.
        for (auto* widget : world.window->findChildren<QWidget*>())
            if (dynamic_cast<HistoryPage*>(widget))
                widget->findChild<QLineEdit*>()->setText(QStringLiteral("no such words"));
        takePage(album, world, WindowPage::history, "history-no-match");
    }
    WindowWorld world;
    world.files.unreadable = true;
    world.settle();
    takePage(album, world, WindowPage::history, "history-error");
    takePage(album, world, WindowPage::insights, "insights-error");
}

// The user's check for updates in each state, and the question before a deletion.
void windows(Album& album) {
    WindowWorld world;
    world.offerUpdate(std::string(4'200'000, 'x'),
                      "<h3>New</h3><ul><li>Dictation in three more languages</li>"
                      "<li>Corrections are found faster</li></ul>");
    world.downloader.package.reset();
    auto& updater = world.updater;
    UpdateWindow window(updater);
    updater.check();
    window.present();
    album.take(window, "update-checking");
    world.scheduler.advance(5s);
    album.take(window, "update-available");
    updater.download();
    album.take(window, "update-downloading");
    world.scheduler.advance(5s);
    album.take(window, "update-failed");
    updater.close();

    fillHistory(world);
    takePage(album, world, WindowPage::history, {});
    for (auto* button : world.window->findChildren<QPushButton*>())
        if (button->accessibleName() == HistoryRow::tr("Delete dictation")) {
            button->click();
            break;
        }
    if (auto* box = world.window->findChild<QMessageBox*>()) album.take(*box, "confirmation");
}

void editors(Album& album) {
    WindowWorld world;
    world.corrections.save({.original = "kunigunde", .replacement = "Cunégonde"});
    const auto editor = [&](TextCorrection rule, std::optional<QString> transcript) {
        auto* made = new CorrectionEditor(world.corrections, std::move(rule), transcript, nullptr);
        made->show();
        return made;
    };
    auto* empty = editor({}, {});
    album.take(*empty, "editor-empty");
    empty->close();
    const auto transcript = QStringLiteral("We met Kunigunde yesterday.");
    auto* preview = editor({.original = "Kunigunde", .replacement = "Cunégonde"}, transcript);
    album.take(*preview, "editor-preview");
    for (auto* button : preview->findChildren<QPushButton*>())
        if (button->isDefault()) button->click();
    album.take(*preview, "editor-duplicate");
    preview->close();
    auto* other = editor({.original = "somewhere else", .replacement = "elsewhere"}, transcript);
    album.take(*other, "editor-no-match");
    other->close();
}

}  // namespace
}  // namespace quorvi::test

int main(int argc, char** argv) {
    using namespace quorvi;
    using namespace quorvi::test;
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s FOLDER [SUFFIX]\n", argv[0]);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QCoreApplication::setApplicationVersion(QStringLiteral("0.1.0"));
    installDesign(application);
    const auto english = installTranslation(QLocale());
    const QString folder = QString::fromLocal8Bit(argv[1]);
    if (!QDir().mkpath(folder)) return 1;
    Album album(folder, argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString());
    for (const auto& [theme, palette] : palettes()) {
        QApplication::setPalette(refined(palette));
        album.setTheme(theme);
        dictationPages(album);
        historyPages(album);
        settingsPages(album);
        editors(album);
        windows(album);
    }
    QApplication::setPalette(refined(palettes().front().second));
    for (const auto language : {QLocale::German, QLocale::Greek}) {
        const QLocale locale(language);
        QLocale::setDefault(locale);
        const auto translation = installTranslation(locale);
        album.setTheme(QStringLiteral("light-") + locale.name().left(2));
        dictationPages(album);
        historyPages(album);
        settingsPages(album);
        editors(album);
        windows(album);
    }
    return 0;
}
