#include "Quorvi/app/Application.h"

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "Quorvi/app/CommandLine.h"
#include "Quorvi/app/composition/AppWindow.h"
#include "Quorvi/app/composition/LinuxDesktop.h"
#include "Quorvi/app/composition/StoredFiles.h"
#include "Quorvi/app/composition/SyncComponents.h"
#include "Quorvi/app/composition/Updates.h"
#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/platform/linux/posix/ColdFile.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/propertylist/PropertyListPreferences.h"
#include "Quorvi/platform/linux/shortcuts/KeyRepeats.h"
#include "Quorvi/shell/BusService.h"
#include "Quorvi/shell/DesktopColorScheme.h"
#include "Quorvi/shell/HelperPrograms.h"
#include "Quorvi/shell/InterruptionNote.h"
#include "Quorvi/shell/LayerIndicator.h"
#include "Quorvi/shell/QtKeyMonitor.h"
#include "Quorvi/shell/QtScheduler.h"
#include "Quorvi/shell/QuitSignals.h"
#include "Quorvi/shell/SingleInstance.h"
#include "Quorvi/system/MemoryKeyStore.h"
#include "Quorvi/ui/design/DesignStyle.h"
#include "Quorvi/ui/indicator/RecordingPanel.h"
#include "Quorvi/ui/status/StatusItem.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/translations/ShownShortcut.h"
#include "Quorvi/ui/translations/Translations.h"
#include "QuorviCore/transcription/ServiceAddress.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// How long quitting waits for the user's clipboard to be restored.
constexpr auto quitPatience = 2s;
// How long a desktop that is starting has to bring its tray up.
constexpr auto trayPatience = 5s;

// The whole program. Main thread. Members are in the order of dependence.
class Application {
public:
    Application(QApplication& qt, const DesktopCapabilities& capabilities,
                const CommandLine& options, std::string apiKey)
        : qt_(qt),
          capabilities_(capabilities),
          desktop_(scheduler_, helperProgram("quorvi-clipboard-keeper"),
                   programBeside("quorvi-speech-service"), capabilities),
          isKeyGiven_(!apiKey.empty()),
          printStages_(options.printStages) {
        preferenceChanges_ = preferences_.onChange([this] { reportPreferences(); });
        reportPreferences();
        // A key from the environment is for this run only and is not stored.
        if (apiKey.empty())
            keyStore_ = desktop_.keychainStore(preferences_);
        else
            keyStore_ = std::make_unique<MemoryKeyStore>();
        createModel(options);
        createInterface();
        observe();
        if (!apiKey.empty())
            tasks_.start([this, &apiKey](std::stop_token) { return keepKey(std::move(apiKey)); });
        modelChanged();
        tasks_.start([this](const std::stop_token&) { return noteLaunch(); });
        scheduler_.post([this] { readYears(); });
    }

    // Stops all work, hands the clipboard over and ends the event loop.
    void quit() {
        if (quitting_) return;
        quitting_ = true;
        permissions_ = {};
        trayTimer_.cancel();
        statusItem_->hide();
        model_->shutdown();
        updates_.updater().close();
        tasks_.start([this](std::stop_token stop) { return leave(stop); });
    }

private:
    void createModel(const CommandLine& options) {
        model_ = std::make_unique<AppModel>(environment());
        sync_ = std::make_unique<SyncComponents>(*model_, history_, corrections_, preferences_,
                                                 files_, scheduler_, chosen(options));
        if (options.shortcut) model_->setShortcut(*options.shortcut);
        if (options.mode) model_->setMode(*options.mode);
    }

    void createInterface() {
        const auto open = [this] { openWindow(); };
        const auto quit = [this] { this->quit(); };
        indicator_ = makeIndicator();
        model_->showOverlay = [this] {
            setRightAltIsAltGr(desktop_.rightAltIsAltGr());
            if (indicator_) indicator_->present();
        };
        model_->hideOverlay = [this] {
            if (indicator_) indicator_->dismiss();
        };
        statusItem_ = std::make_unique<StatusItem>(
            *model_, StatusItem::Actions{.openWindow = open,
                                         .checkForUpdates = [this] { updates_.updater().check(); },
                                         .quit = quit});
        window_ = std::make_unique<AppWindow>(AppWindow::Parts{
            *model_, corrections_, history_, *sync_, *sync_, model_->speechService().keys(),
            updates_.updater(), preferences_, scheduler_, desktop_.calendar(), quit,
            [this](PrivacyPane pane) { return desktop_.hasSettingsFor(pane); }, capabilities_,
            isKeyGiven_, desktop_.keyConsent()});
        bus_ = std::make_unique<BusService>(*model_,
                                            BusService::Actions{open, quit, [this] { toggle(); }});
        trayTimer_ = scheduler_.after(trayPatience, [this] { window_->openIfThereIsNoTray(); });
    }

    // A desktop runs the command of a key that is held again and again. On X11 the key is seen.
    void toggle() {
        if (capabilities_.isWayland)
            toggles_.note();
        else
            model_->toggle();
    }

    // A plain window of a Wayland desktop would take the focus from the field: then rather none.
    std::unique_ptr<Indicator> makeIndicator() {
        const auto surroundings = [this] { return desktop_.surroundings(); };
        if (capabilities_.hasLayerShell)
            return std::make_unique<LayerIndicator>(*model_, updates_.updater(), scheduler_,
                                                    surroundings);
        if (QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) return nullptr;
        return std::make_unique<RecordingPanel>(*model_, updates_.updater(), surroundings);
    }

    void observe() {
        changes_ = model_->onChange([this] { modelChanged(); });
        interruptionNote_ = std::make_unique<InterruptionNote>(*model_, history_, preferencesDisk_,
                                                               scheduler_, interruptionNoteFile());
        surroundings_ = desktop_.onSurroundingsChanged([this] {
            if (indicator_) indicator_->followSurroundings();
        });
        permissions_ = desktop_.onPermissionsChanged([this] {
            // Before the observers of the model write the shortcut's name.
            setRightAltIsAltGr(desktop_.rightAltIsAltGr());
            model_->refreshPermissions();
        });
        quitSignals_ = std::make_unique<QuitSignals>([this] { quit(); });
    }

    // The settings that the command line sets.
    static std::vector<std::string_view> chosen(const CommandLine& options) {
        std::vector<std::string_view> keys;
        if (options.shortcut) keys.push_back(setting::hotkey.key());
        if (options.mode) keys.push_back(setting::mode.key());
        return keys;
    }

    AppModel::Environment environment() {
        const char* configured = std::getenv("QUORVI_SERVICE");
        auto environment =
            desktop_.environment(localKeys_, preferences_, *keyStore_, history_, corrections_);
        environment.accountSync = [this]() -> SyncControl& { return *sync_; };
        if (configured && *configured) environment.service = serviceAddress(configured);
        // A key from the environment is for whichever service is used.
        if (!isKeyGiven_) environment.otherKeys = desktop_.otherKeys(preferences_);
        return environment;
    }

    // Opens the window for a new user.
    Task<void> noteLaunch() {
        const bool launchedBefore = settings_.get(setting::hasLaunchedQuorvi);
        settings_.set(setting::hasLaunchedQuorvi, true);
        auto looking = keyStore_->refresh();
        const bool hasSavedKey = co_await looking;
        if (!launchedBefore && !hasSavedKey) openWindow();
    }

    // Reads the history and the sync archive. Not before the tray icon is up: a long history would
    // slow the start of a small machine down.
    void readYears() {
        historyHold_.reset();
        sync_->begin();
    }

    void openWindow() { window_->open(); }

    void reportPreferences() {
        auto problem = preferences_.persistenceError().value_or(Message());
        if (problem == preferencesProblem_) return;
        preferencesProblem_ = std::move(problem);
        if (!preferencesProblem_.isEmpty())
            std::fprintf(stderr, "quorvi: %s\n", shownInEnglish(preferencesProblem_).c_str());
    }

    Task<void> keepKey(std::string apiKey) {
        auto saving = model_->saveKey(std::move(apiKey));
        if (!co_await saving)
            std::fprintf(stderr, "quorvi: QUORVI_API_KEY: %s\n",
                         shownInEnglish(model_->keyMessage()).c_str());
    }

    Task<void> leave(std::stop_token stop) {
        const auto latest = scheduler_.now() + quitPatience;
        while (!model_->isIdle() && scheduler_.now() < latest) {
            auto pause = sleepFor(scheduler_, 5ms, stop);
            co_await pause;
        }
        preferences_.flush();
        auto leaving = desktop_.leaveClipboard();
        co_await leaving;
        qt_.quit();
    }

    void modelChanged() {
        if (!printStages_) return;
        auto line = shownInEnglish(title(model_->stage()));
        line += " | " + shownInEnglish(model_->message()) +
                (model_->ready() ? " | ready" : " | not ready");
        if (line == printed_) return;
        printed_ = line;
        std::printf("%s\n", line.c_str());
        std::fflush(stdout);
    }

    QApplication& qt_;
    const DesktopCapabilities capabilities_;
    QtScheduler scheduler_;
    LinuxDesktop desktop_;
    QtKeyMonitor localKeys_;
    PosixFileStore files_;
    SerialExecutor preferencesDisk_{"preferences"};
    PropertyListPreferences preferences_{files_, preferencesFile(), preferencesDisk_, scheduler_};
    Settings settings_{preferences_};
    std::unique_ptr<KeyStore> keyStore_;
    std::unique_ptr<SerialExecutor::Hold> historyHold_ = desktop_.holdHistory();
    HistoryStore history_{desktop_.historyEnvironment(preferences_, historyFile())};
    CorrectionStore corrections_{preferences_, scheduler_};
    std::unique_ptr<AppModel> model_;
    std::unique_ptr<InterruptionNote> interruptionNote_;
    std::unique_ptr<SyncComponents> sync_;
    Updates updates_{scheduler_, preferences_};
    std::unique_ptr<Indicator> indicator_;
    std::unique_ptr<StatusItem> statusItem_;
    std::unique_ptr<AppWindow> window_;
    std::unique_ptr<BusService> bus_;
    KeyRepeats toggles_{scheduler_, KeyRepeats::Timing::unknown(),
                        [this](KeyRepeats::Change change) {
                            if (change == KeyRepeats::Change::pressed) model_->toggle();
                        }};
    Timer trayTimer_;
    std::unique_ptr<QuitSignals> quitSignals_;
    bool isKeyGiven_;
    bool printStages_;
    bool quitting_ = false;
    std::string printed_;
    Message preferencesProblem_;
    Subscription preferenceChanges_;
    Subscription changes_;
    Subscription permissions_;
    Subscription surroundings_;
    TaskScope tasks_{scheduler_};
};

}  // namespace

int runApplication(QApplication& qt, const DesktopCapabilities& capabilities, std::string apiKey) {
    const auto options = CommandLine::parse();
    const SingleInstance instance;
    if (!instance.isFirst()) {
        std::fprintf(stderr, "quorvi: %s\n", instance.rival().c_str());
        return 0;
    }
    static auto& coldFile = *new ColdFile(historyFile().parent_path());  // never destroyed
    ColdMemory::use(coldFile);
    installDesign(qt);
    const DesktopColorScheme colours;
    const auto translation = installTranslation(QLocale());
    try {
        Application application(qt, capabilities, options, std::move(apiKey));
        return QApplication::exec();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorvi: %s\n", shownInEnglish(error).c_str());
        return 2;
    }
}

}  // namespace quorvi
