#include "Quorvi/dictation/AppModel.h"

#include <utility>

#include "Quorvi/dictation/PreferenceKeys.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr Duration permissionPollInterval = 2s;

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
      hasKey_(environment_.keyStore.hasKey()),
      recorder_(environment_.audioInput, environment_.disk, environment_.scheduler,
                environment_.recordings),
      sounds_(environment_.soundOutput),
      insertion_({environment_.scheduler, environment_.accessibilityQueries,
                  environment_.accessibility, environment_.workspace, environment_.pasteboard,
                  environment_.poster, environment_.tap}),
      hotkey_(environment_.scheduler, environment_.tap, environment_.accessibility),
      client_(environment_.transport, environment_.service),
      correctionObserver_(
          environment_.scheduler, environment_.accessibilityQueries,
          [inspector = FieldInspector(environment_.scheduler, environment_.accessibility,
                                      environment_.workspace)](const auto& target, bool focused) {
              return inspector.correctionField(target, focused);
          },
          [&workspace = environment_.workspace](pid_t pid) {
              const auto frontmost = workspace.frontmostApplication();
              return frontmost && frontmost->pid == pid;
          }),
      tasks_(environment_.scheduler) {
    environment_.corrections.installTarnelCorrectionsIfNeeded();
    readPreferences();
    wireCallbacks();
    recorder_.removeStaleRecordings();
    refreshPermissions();
    permissionTimer_ =
        environment_.scheduler.every(permissionPollInterval, [this] { refreshPermissions(); });
    sleepObserver_ = environment_.workspace.onWillSleep([this] { cancel(); });
    wakeObserver_ = environment_.workspace.onDidWake([this] {
        hotkey_.stop();
        refreshPermissions();
    });
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

void AppModel::wireCallbacks() {
    environment_.corrections.onLearningChanged = [this] { correctionObserver_.stop(false); };
    environment_.corrections.onLearned = [this](const TextCorrection& rule) {
        correctionLearned(rule);
    };
    hotkey_.onTransition = [this](bool down) { shortcutTransition(down); };
    hotkey_.onCancel = [this] { cancel(); };
    hotkey_.onInterruption = [this] {
        if (!isActive(stage_) && !starting_) return;
        cancel();
        fail("Keyboard access was interrupted. Try your shortcut again.");
    };
    recorder_.onRecordingChanged = [this](bool began) {
        const auto cue = began ? RecordingCue::start : RecordingCue::stop;
        sounds_.play(cue, soundCuesEnabled_, soundStyle(cue));
    };
    recorder_.onFailure = [this](const std::string& message) {
        if (stage_ != DictationStage::recording) return;
        cancel();
        fail(message);
    };
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

void AppModel::refreshKey() {
    // The key store is left alone during a dictation.
    if (!isActive(stage_)) set(hasKey_, environment_.keyStore.hasKey());
}

void AppModel::refreshPermissions() {
    if (shutDown_) return;
    refreshKey();
    set(microphoneAllowed_,
        environment_.permissions.microphone() == MicrophoneAuthorization::authorized);
    set(accessibilityAllowed_, environment_.accessibility.isTrusted());
    if (accessibilityAllowed_) {
        set(keyboardReady_, hotkey_.start());
    } else {
        hotkey_.stop();
        set(keyboardReady_, false);
    }
    if (stage_ == DictationStage::recording && !(microphoneAllowed_ && accessibilityAllowed_)) {
        cancel();
        fail("A required permission changed. Check Settings before dictating again.");
    }
}

void AppModel::requestMicrophone() {
    if (environment_.permissions.microphone() == MicrophoneAuthorization::notDetermined)
        environment_.permissions.requestMicrophone([this] { refreshPermissions(); });
    else
        environment_.permissions.openPrivacyPane(PrivacyPane::microphone);
}

void AppModel::requestAccessibility() {
    environment_.accessibility.requestTrust();
    environment_.permissions.openPrivacyPane(PrivacyPane::accessibility);
}

void AppModel::openPrivacy(PrivacyPane pane) {
    environment_.permissions.openPrivacyPane(pane);
}

Task<bool> AppModel::saveKey(std::string key) {
    auto saving = environment_.keyStore.save(std::move(key));
    try {
        co_await saving;
    } catch (const std::exception& error) {
        set(keyMessage_, std::string(error.what()));
        co_return false;
    }
    hasKey_ = true;
    keyMessage_ = "Saved in macOS Keychain.";
    changed();
    co_return true;
}

Task<void> AppModel::removeKey() {
    auto removing = environment_.keyStore.remove();
    try {
        co_await removing;
    } catch (const std::exception& error) {
        set(keyMessage_, std::string(error.what()));
        co_return;
    }
    hasKey_ = false;
    keyMessage_ = "API key removed.";
    changed();
}

Task<bool> AppModel::setKeySync(bool on) {
    auto changing = environment_.keyStore.setSyncEnabled(on);
    try {
        co_await changing;
    } catch (const std::exception& error) {
        set(keyMessage_, std::string(error.what()));
        co_return false;
    }
    set(keyMessage_,
        std::string(on ? "API key sync enabled. Turn on iCloud Passwords & Keychain on "
                         "your other Macs."
                       : "API key kept on this Mac; iCloud copy removed."));
    co_return true;
}

void AppModel::previewSound(RecordingCue cue) {
    if (!isActive(stage_)) sounds_.play(cue, soundCuesEnabled_, soundStyle(cue));
}

void AppModel::correctionLearned(const TextCorrection& rule) {
    if (isActive(stage_) || starting_ || shutDown_) return;
    if (canCopyFromOverlay_ || stage_ == DictationStage::failure) return;
    stage_ = DictationStage::learned;
    message_ = rule.original + " → " + rule.replacement;
    changed();
    show();
    dismissOverlay(4s);
}

void AppModel::reportInterruption(const std::string& sentence) {
    if (!isActive(stage_) && !starting_ && !shutDown_) fail(sentence);
}

void AppModel::resetDictation() {
    cancel();
    endShortcutCapture();
    hotkey_.stop();
    refreshPermissions();
    set(message_,
        std::string(ready() ? "Dictation reset. Click a text field and hold your shortcut again."
                            : "Dictation reset. Check permissions and API key setup in Settings."));
}

void AppModel::shutdown() {
    shutDown_ = true;
    environment_.accountSync().shutdown();
    cancel();
    endShortcutCapture();
    hotkey_.stop();
    permissionTimer_.cancel();
    environment_.history.flush();
    sleepObserver_ = {};
    wakeObserver_ = {};
}

void AppModel::show() {
    if (showOverlay) showOverlay();
}

void AppModel::hide() {
    if (hideOverlay) hideOverlay();
}

void AppModel::dismissOverlay(std::chrono::seconds delay) {
    dismissTimer_ = environment_.scheduler.after(delay, [this] { hide(); });
}

}  // namespace quorvi
