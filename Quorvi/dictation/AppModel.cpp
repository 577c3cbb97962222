#include "Quorvi/dictation/AppModel.h"

#include <utility>

namespace quorvi {

namespace {

// What the user has chosen, as opposed to what the program remembers.
std::vector<const AnySetting*> chosenSettings() {
    std::vector<const AnySetting*> chosen;
    for (const auto* each : allSettings)
        if (each->scope() != SettingScope::state) chosen.push_back(each);
    return chosen;
}

}  // namespace

AppModel::AppModel(Environment environment)
    : environment_(std::move(environment)),
      hotkey_(environment_.scheduler, environment_.tap, environment_.accessibility,
              environment_.typing),
      insertion_({environment_.scheduler, environment_.accessibilityQueries,
                  environment_.accessibility, environment_.workspace, environment_.pasteboard,
                  environment_.poster, environment_.tap, environment_.committer}),
      learning_(environment_.scheduler, environment_.accessibilityQueries,
                environment_.accessibility, environment_.workspace, environment_.corrections,
                hotkey_),
      status_(environment_.scheduler),
      service_({settings_, environment_.scheduler, environment_.transport, environment_.keyStore,
                environment_.otherKeys, environment_.offlineProgram, environment_.service}),
      key_(service_.keys()),
      permissions_({environment_.scheduler, environment_.permissions, environment_.accessibility,
                    environment_.workspace, hotkey_, key_, status_,
                    environment_.desktopShortcut != nullptr}),
      microphone_(settings_, environment_.audioInput),
      session_(sessionEnvironment()),
      insertionTest_({environment_.scheduler, session_, insertion_, learning_,
                      environment_.corrections, hotkey_, permissions_, status_}),
      shortcutChoice_(environment_.desktopShortcut),
      shortcutCapture_(environment_.localKeys, hotkey_) {
    environment_.corrections.installTarnelCorrectionsIfNeeded();
    environment_.preferences.remove(obsoleteSetting);
    followSettings();
    settingsObserver_ = settings_.onChange(chosenSettings(), [this] { followSettings(); });
    connectParts();
    session_.removeStaleRecordings();
    keyObserver_ = service_.keys().onChange([this] {
        permissions_.refresh();
        changed();  // the offline service may have been installed
    });
    permissions_.start();
    sleepObserver_ = environment_.workspace.onWillSleep([this] {
        cancel();
        session_.forgetFailed();
    });
    lockObserver_ = environment_.workspace.onScreenLock([this] {
        if (canCancel()) cancel();
        session_.forgetFailed();
    });
}

DictationSession::Environment AppModel::sessionEnvironment() {
    auto& e = environment_;
    return {.scheduler = e.scheduler,
            .disk = e.disk,
            .audioInput = e.audioInput,
            .microphone = microphone_,
            .recordings = e.recordings,
            .soundOutput = e.soundOutput,
            .service = service_,
            .history = e.history,
            .corrections = e.corrections,
            .hotkey = hotkey_,
            .insertion = insertion_,
            .learning = learning_,
            .permissions = permissions_,
            .status = status_,
            .network = e.network,
            .options = [this] { return options(); },
            .keepsFailed = [this] { return settings_.get(setting::keepFailedRecording); },
            .soundStyle =
                [this](RecordingCue cue) {
                    return settings_.get(setting::soundCuesEnabled) ? soundStyle(cue)
                                                                    : RecordingSoundStyle::silent;
                }};
}

TranscriptionOptions AppModel::options() const {
    return {DictationLanguage::automatic, transcriptionModel(), vocabulary()};
}

AppModel::~AppModel() {
    environment_.corrections.onLearned = nullptr;
    environment_.corrections.onLearningChanged = nullptr;
}

void AppModel::followSettings() {
    hotkey_.setShortcut(shortcut());
    hotkey_.setMode(mode());
    if (!settings_.get(setting::keepFailedRecording)) session_.forgetFailed();
    changed();
}

void AppModel::connectParts() {
    status_.onChange = key_.onChange = permissions_.onChange = session_.onChange =
        shortcutCapture_.onChange = microphone_.onChange = [this] { changed(); };
    status_.onShowOverlay = [this] {
        if (showOverlay) showOverlay();
    };
    status_.onHideOverlay = [this] {
        if (hideOverlay) hideOverlay();
    };
    permissions_.onRefresh = [this] { session_.permissionsRefreshed(); };
    session_.onCancel = [this] { insertionTest_.cancel(); };
    shortcutCapture_.onChosen = [this](const Hotkey& shortcut) { setShortcut(shortcut); };
    shortcutCapture_.suits = [this](const Hotkey& key) { return shortcutChoice_.suits(key); };
    shortcutCapture_.onRefused = [this] { status_.say(shortcutChoice_.unsuitable()); };
    if (environment_.desktopShortcut)
        desktopShortcutObserver_ = environment_.desktopShortcut->onChange([this] {
            permissions_.refresh();
            changed();
        });
    hotkey_.onTransition = [this](bool down) { shortcutTransition(down); };
    hotkey_.onCancel = [this] { cancel(); };
    hotkey_.onInterruption = [this] { session_.keyboardInterrupted(); };
    environment_.corrections.onLearningChanged = [this] { learning_.abandonWatch(); };
    environment_.corrections.onLearned = [this](const TextCorrection& rule) {
        correctionLearned(rule);
    };
}

void AppModel::shortcutTransition(bool down) {
    if (shortcutCapture_.isOn()) return;
    if (!insertionTest_.isArmed())
        session_.shortcutChanged(down);
    else if (down)
        insertionTest_.run();
}

void AppModel::start() {
    hotkey_.noteCommand();
    if (shortcutCapture_.isOn()) return;
    if (insertionTest_.isArmed())
        insertionTest_.run();
    else
        session_.start();
}

void AppModel::finish() {
    hotkey_.noteCommand();
    session_.acceptInput();
    session_.finish();
}

void AppModel::toggle() {
    if (hotkey_.noteCommand()) return;
    if (session_.isStarting() || stage() == DictationStage::recording)
        finish();
    else
        start();
}

void AppModel::retry() {
    hotkey_.noteCommand();
    if (!shortcutCapture_.isOn() && !insertionTest_.isArmed()) session_.retry();
}

void AppModel::correctionLearned(const TextCorrection& rule) {
    if (!session_.canBegin() || status_.offersCopy() || session_.canRetry()) return;
    if (status_.stage() == DictationStage::failure) return;
    status_.enter(DictationStage::learned, say::verbatim(rule.original + " → " + rule.replacement));
    status_.showOverlay(std::chrono::seconds(4));
}

void AppModel::reportInterruption(Message sentence) {
    if (session_.canBegin()) session_.fail(std::move(sentence));
}

void AppModel::beginShortcutCapture() {
    if (!session_.canBegin()) return;
    if (insertionTest_.isArmed()) cancel();  // Escape would end the test instead of the choice
    shortcutCapture_.begin();
}

void AppModel::resetDictation() {
    cancel();
    endShortcutCapture();
    hotkey_.stop();
    refreshPermissions();
    status_.say(ready() ? say::dictationReset() : say::dictationResetNotReady());
}

void AppModel::restoreClipboard() {
    if (!canRestoreClipboard()) return;
    insertion_.restoreClipboard();
    changed();
}

void AppModel::shutdown() {
    permissions_.stop();
    session_.close();
    environment_.accountSync().shutdown();
    cancel();
    session_.forgetFailed();
    endShortcutCapture();
    hotkey_.stop();
    service_.close();
    environment_.history.flush();
    sleepObserver_ = {};
    lockObserver_ = {};
}

}  // namespace quorvi
