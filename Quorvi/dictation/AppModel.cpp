#include "Quorvi/dictation/AppModel.h"

#include <utility>

#include "Quorvi/dictation/PreferenceKeys.h"

namespace quorvi {

namespace {

// The stored value of an enumeration, `fallback` when it is absent or unknown.
template <class T, class Parse>
T stored(const Preferences& preferences, std::string_view key, Parse parse, T fallback) {
    const auto raw = preferences.string(key);
    if (!raw) return fallback;
    return parse(*raw).value_or(fallback);
}

}  // namespace

AppModel::AppModel(Environment environment)
    : environment_(std::move(environment)),
      hotkey_(environment_.scheduler, environment_.tap, environment_.accessibility),
      insertion_({environment_.scheduler, environment_.accessibilityQueries,
                  environment_.accessibility, environment_.workspace, environment_.pasteboard,
                  environment_.poster, environment_.tap}),
      learning_(environment_.scheduler, environment_.accessibilityQueries,
                environment_.accessibility, environment_.workspace, environment_.corrections,
                hotkey_),
      status_(environment_.scheduler),
      key_(environment_.keyStore),
      permissions_({environment_.scheduler, environment_.permissions, environment_.accessibility,
                    environment_.workspace, hotkey_, key_, status_}),
      session_(sessionEnvironment()),
      insertionTest_({environment_.scheduler, session_, insertion_, learning_,
                      environment_.corrections, hotkey_, permissions_, status_}),
      shortcutCapture_(environment_.localKeys, hotkey_) {
    environment_.corrections.installTarnelCorrectionsIfNeeded();
    readPreferences();
    connectParts();
    session_.removeStaleRecordings();
    permissions_.start();
    sleepObserver_ = environment_.workspace.onWillSleep([this] { cancel(); });
}

DictationSession::Environment AppModel::sessionEnvironment() {
    auto& e = environment_;
    return {.scheduler = e.scheduler,
            .disk = e.disk,
            .audioInput = e.audioInput,
            .recordings = e.recordings,
            .soundOutput = e.soundOutput,
            .transport = e.transport,
            .service = e.service,
            .keyStore = e.keyStore,
            .history = e.history,
            .corrections = e.corrections,
            .hotkey = hotkey_,
            .insertion = insertion_,
            .learning = learning_,
            .permissions = permissions_,
            .status = status_,
            .options =
                [this] {
                    return TranscriptionOptions{DictationLanguage::automatic, transcriptionModel_,
                                                vocabulary_};
                },
            .soundStyle =
                [this](RecordingCue cue) {
                    return soundCuesEnabled_ ? soundStyle(cue) : RecordingSoundStyle::silent;
                }};
}

AppModel::~AppModel() {
    environment_.corrections.onLearned = nullptr;
    environment_.corrections.onLearningChanged = nullptr;
}

void AppModel::readPreferences() {
    auto& preferences = environment_.preferences;
    recordingTheme_ = stored(preferences, preferenceKey::recordingTheme, recordingThemeFromRawValue,
                             RecordingTheme::glass);
    startSoundStyle_ = stored(preferences, preferenceKey::startSoundStyle,
                              recordingSoundStyleFromRawValue, RecordingSoundStyle::classic);
    stopSoundStyle_ = stored(preferences, preferenceKey::stopSoundStyle,
                             recordingSoundStyleFromRawValue, RecordingSoundStyle::classic);
    soundCuesEnabled_ = preferences.boolean(preferenceKey::soundCuesEnabled).value_or(true);
    transcriptionModel_ = stored(preferences, preferenceKey::model, transcriptionModelFromRawValue,
                                 TranscriptionModel::transcribe);
    vocabulary_ = preferences.string(preferenceKey::vocabulary).value_or("");
    preferences.remove(preferenceKey::obsoleteLanguage);

    std::optional<Hotkey> shortcut;
    if (const auto json = preferences.bytes(preferenceKey::hotkey))
        shortcut = Hotkey::fromJson(textOf(*json));
    hotkey_.setShortcut(shortcut.value_or(Hotkey::rightOption));
    hotkey_.setMode(
        stored(preferences, preferenceKey::mode, dictationModeFromRawValue, DictationMode::hold));
}

void AppModel::connectParts() {
    status_.onChange = key_.onChange = permissions_.onChange = session_.onChange =
        shortcutCapture_.onChange = [this] { changed(); };
    status_.onShowOverlay = [this] {
        if (showOverlay) showOverlay();
    };
    status_.onHideOverlay = [this] {
        if (hideOverlay) hideOverlay();
    };
    permissions_.onRefresh = [this] { session_.permissionsRefreshed(); };
    session_.onCancel = [this] { insertionTest_.cancel(); };
    shortcutCapture_.onChosen = [this](Hotkey shortcut) { setShortcut(std::move(shortcut)); };
    shortcutCapture_.onRefused = [this] { status_.say(say::unsuitableShortcut()); };
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

void AppModel::setMode(DictationMode mode) {
    if (mode == hotkey_.mode()) return;
    hotkey_.setMode(mode);
    environment_.preferences.setString(preferenceKey::mode, std::string(rawValue(mode)));
    changed();
}

void AppModel::setShortcut(Hotkey shortcut) {
    if (shortcut == hotkey_.shortcut()) return;
    environment_.preferences.setBytes(preferenceKey::hotkey, bytesOf(shortcut.toJson()));
    hotkey_.setShortcut(std::move(shortcut));
    changed();
}

void AppModel::setTranscriptionModel(TranscriptionModel model) {
    if (model == transcriptionModel_) return;
    environment_.preferences.setString(preferenceKey::model, std::string(rawValue(model)));
    set(transcriptionModel_, model);
}

void AppModel::setVocabulary(std::string vocabulary) {
    if (vocabulary == vocabulary_) return;
    environment_.preferences.setString(preferenceKey::vocabulary, vocabulary);
    set(vocabulary_, std::move(vocabulary));
}

void AppModel::setRecordingTheme(RecordingTheme theme) {
    if (theme == recordingTheme_) return;
    environment_.preferences.setString(preferenceKey::recordingTheme, std::string(rawValue(theme)));
    set(recordingTheme_, theme);
}

void AppModel::setSoundStyle(RecordingCue cue, RecordingSoundStyle style) {
    if (style == soundStyle(cue)) return;
    const bool isStart = cue == RecordingCue::start;
    environment_.preferences.setString(
        isStart ? preferenceKey::startSoundStyle : preferenceKey::stopSoundStyle,
        std::string(rawValue(style)));
    set(isStart ? startSoundStyle_ : stopSoundStyle_, style);
}

void AppModel::setSoundCuesEnabled(bool enabled) {
    if (enabled == soundCuesEnabled_) return;
    environment_.preferences.setBoolean(preferenceKey::soundCuesEnabled, enabled);
    set(soundCuesEnabled_, enabled);
}

void AppModel::correctionLearned(const TextCorrection& rule) {
    if (!session_.canBegin() || status_.offersCopy()) return;
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

void AppModel::shutdown() {
    permissions_.stop();
    session_.close();
    environment_.accountSync().shutdown();
    cancel();
    endShortcutCapture();
    hotkey_.stop();
    environment_.history.flush();
    sleepObserver_ = {};
}

}  // namespace quorvi
