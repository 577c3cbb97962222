#pragma once

#include <functional>
#include <string>

#include "Quorvi/dictation/ApiKey.h"
#include "Quorvi/dictation/DictationSession.h"
#include "Quorvi/dictation/DictationStatus.h"
#include "Quorvi/dictation/InsertionTest.h"
#include "Quorvi/dictation/MicrophoneChoice.h"
#include "Quorvi/dictation/PasteLearning.h"
#include "Quorvi/dictation/Permissions.h"
#include "Quorvi/dictation/RecordingCue.h"
#include "Quorvi/dictation/ShortcutCapture.h"
#include "Quorvi/dictation/ShortcutChoice.h"
#include "Quorvi/dictation/WindowPage.h"
#include "Quorvi/platform/SyncControl.h"
#include "Quorvi/settings/Settings.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

// The controller of the application, and the only part of the model that the interface sees. Owns
// the parts that dictate, connects them with each other and with the keyboard, and keeps the
// settings. Main thread. Lives as long as the process; call shutdown() before destroying it.
class AppModel {
public:
    // Everything that the controller uses; all of it outlives the controller.
    struct Environment {
        Scheduler& scheduler;
        Executor& accessibilityQueries;
        Executor& disk;
        KeyEventTap& tap;
        KeyEventPoster& poster;
        Accessibility& accessibility;
        Workspace& workspace;
        Pasteboard& pasteboard;
        AudioInput& audioInput;
        RecordingFiles& recordings;
        SoundOutput& soundOutput;
        SystemPermissions& permissions;
        LocalKeyMonitor& localKeys;
        Preferences& preferences;
        KeyStore& keyStore;
        HttpTransport& transport;
        HistoryStore& history;
        CorrectionStore& corrections;
        std::function<SyncControl&()> accountSync;  // created on first use
        std::string service;  // a fixed address, see SpeechServiceChoice; or empty
        ServiceKeyStore::Factory otherKeys = {};   // see ServiceKeyStore; or empty
        ServiceProgram* offlineProgram = nullptr;  // the recogniser, if this machine may have one
        Network* network = nullptr;          // null: only the user tries again what has failed
        TextCommitter* committer = nullptr;  // null: text is only pasted
        DesktopShortcut* desktopShortcut = nullptr;  // null: the tap sees all keys
        InputActivity* typing = nullptr;             // null: the tap sees all keys
    };

    explicit AppModel(Environment environment);
    ~AppModel();
    AppModel(const AppModel&) = delete;
    AppModel& operator=(const AppModel&) = delete;

    // Called after any change of the state below; observers re-read it.
    [[nodiscard]] Subscription onChange(std::function<void()> observer) {
        return changes_.subscribe(std::move(observer));
    }

    // What a dictation is doing.
    DictationStage stage() const { return status_.stage(); }
    const Message& message() const { return status_.message(); }
    // The message is that of the start: nothing has happened yet.
    bool hasNoNews() const { return message().is(Sentence::clickATextField); }
    const std::string& lastTranscript() const { return session_.lastTranscript(); }
    bool canCopyFromOverlay() const { return status_.offersCopy(); }
    bool canRetryFromOverlay() const { return status_.offersRetry(); }
    double elapsed() const { return session_.elapsed(); }  // seconds
    double level() const { return session_.level(); }      // 0 to 1

    // What the program may do.
    bool hasKey() const { return key_.isThere(); }
    bool microphoneAllowed() const { return permissions_.microphone(); }
    bool accessibilityAllowed() const { return permissions_.accessibility(); }
    bool keyboardReady() const { return permissions_.keyboard(); }
    bool ready() const { return permissions_.ready(); }
    const Message& keyMessage() const { return key_.message(); }
    WindowPage selectedPage() const { return selectedPage_; }
    void setSelectedPage(WindowPage page) { set(selectedPage_, page); }

    // Changes of the settings, wherever they come from, are told to observers, too.
    Settings& settings() { return settings_; }
    const Settings& settings() const { return settings_; }
    DictationMode mode() const { return settings_.get(setting::mode); }
    void setMode(DictationMode mode) { settings_.set(setting::mode, mode); }
    Hotkey shortcut() const { return settings_.get(setting::hotkey); }
    void setShortcut(const Hotkey& shortcut) { settings_.set(setting::hotkey, shortcut); }
    const ShortcutChoice& shortcutChoice() const { return shortcutChoice_; }
    ShortcutChoice& shortcutChoice() { return shortcutChoice_; }
    // Why the shortcut does nothing, if that is known.
    std::optional<Message> shortcutProblem() const { return shortcutChoice_.problem(shortcut()); }
    TranscriptionModel transcriptionModel() const { return settings_.get(setting::model); }
    void setTranscriptionModel(TranscriptionModel model) { settings_.set(setting::model, model); }
    std::string vocabulary() const { return settings_.get(setting::vocabulary); }
    void setVocabulary(const std::string& text) { settings_.set(setting::vocabulary, text); }
    RecordingTheme recordingTheme() const { return settings_.get(setting::recordingTheme); }
    void setRecordingTheme(RecordingTheme theme) { settings_.set(setting::recordingTheme, theme); }
    RecordingSoundStyle soundStyle(RecordingCue cue) const { return settings_.get(soundOf(cue)); }
    void setSoundStyle(RecordingCue cue, RecordingSoundStyle style) {
        settings_.set(soundOf(cue), style);
    }

    // Commands of the user that are no use of the shortcut: from a button, a menu or the bus. They
    // mean what the shortcut would mean at that moment: nothing while one is being chosen, and an
    // armed insertion test runs. Keys and clicks up to the command are not typing into the field.
    void start();
    void finish();
    // Starts or finishes. Does nothing when auto-repeat of the key that runs it asks again.
    void toggle();
    void cancel() { session_.cancel(); }
    // There is something that cancel() would end, if only a dictation that is starting.
    bool canCancel() const { return isActive(stage()) || isStarting() || insertionTest_.isArmed(); }
    // The field is being captured and the microphone opened; the stage is not yet recording.
    bool isStarting() const { return session_.isStarting(); }
    // A recording that the service failed waits for another try; see DictationSession::retry().
    bool canRetry() const { return session_.canRetry(); }
    void retry();
    void discardFailed() { session_.discardFailed(); }
    // Shows what happened to a dictation that a crash interrupted, unless there is a new one.
    void reportInterruption(Message sentence);
    void copyTranscript() { session_.copyTranscript(); }
    // After a dictation that no program took, its text is on the clipboard in place of the user's
    // content, which this gives back.
    bool canRestoreClipboard() const { return !isActive(stage()) && insertion_.holdsClipboard(); }
    void restoreClipboard();
    void clearTranscript() { session_.clearTranscript(); }
    // Recovers from a stuck state.
    void resetDictation();

    // Looks at what the program may do, and keeps the keyboard monitor running; also done every two
    // seconds.
    void refreshPermissions() { permissions_.refresh(); }
    void requestMicrophone() { permissions_.requestMicrophone(); }
    void requestAccessibility() { permissions_.requestAccessibility(); }
    // Opens the desktop's own settings at, or near, a subject.
    void openPrivacy(PrivacyPane pane) { environment_.permissions.openPrivacyPane(pane); }

    // Store or delete the API key, or its copy for the user's other machines. keyMessage() then
    // says how that went; those with a result return whether they succeeded.
    Task<bool> saveKey(std::string key) { return key_.save(std::move(key)); }
    Task<void> removeKey() { return key_.remove(); }
    Task<bool> setKeySync(bool on) { return key_.setSync(on); }

    void previewSound(RecordingCue cue) { session_.previewSound(cue); }

    // Pastes a sample sentence into the field that the user chooses within ten seconds, or at once
    // when the shortcut is pressed.
    using Sample = InsertionTest::Sample;
    void armInsertionTest(Sample sample = Sample::plain) { insertionTest_.arm(sample); }
    bool insertionTestArmed() const { return insertionTest_.isArmed(); }

    // Lets the user choose a shortcut, see ShortcutCapture. Not during a dictation.
    void beginShortcutCapture();
    void endShortcutCapture() { shortcutCapture_.end(); }
    bool isChoosingShortcut() const { return shortcutCapture_.isOn(); }
    bool hasRefusedShortcut() const { return shortcutCapture_.hasRefused(); }

    // Stops everything before the program quits. Tasks that give the clipboard back or learn from
    // the last edit have ended once isIdle() returns true.
    void shutdown();
    // The speech service. Its own changes are told to observers of the model, too.
    SpeechService& speechService() { return service_; }
    const SpeechService& speechService() const { return service_; }
    // Tries it out; see SpeechService::test().
    Task<void> testSpeechService(std::stop_token stop) { return service_.test(options(), stop); }

    // The microphone. Its changes are told to observers of the model, too.
    MicrophoneChoice& microphone() { return microphone_; }

    bool isIdle() const {
        return session_.isIdle() && insertionTest_.isIdle() && learning_.isIdle();
    }

    // Installed by the application's shell.
    std::function<void()> showOverlay;
    std::function<void()> hideOverlay;

    GlobalHotkey& hotkey() { return hotkey_; }

private:
    static const Setting<RecordingSoundStyle>& soundOf(RecordingCue cue) {
        return cue == RecordingCue::start ? setting::startSoundStyle : setting::stopSoundStyle;
    }
    void followSettings();
    DictationSession::Environment sessionEnvironment();
    TranscriptionOptions options() const;
    void connectParts();
    void shortcutTransition(bool down);
    void correctionLearned(const TextCorrection& rule);
    void changed() { changes_.notify(); }
    template <class T>
    void set(T& field, T value) {
        if (field == value) return;
        field = std::move(value);
        changed();
    }

    Environment environment_;
    Settings settings_{environment_.preferences};
    Observable changes_;

    WindowPage selectedPage_ = WindowPage::dictation;

    GlobalHotkey hotkey_;
    TextInsertion insertion_;
    PasteLearning learning_;
    DictationStatus status_;
    SpeechService service_;
    ApiKey key_;
    Permissions permissions_;
    MicrophoneChoice microphone_;
    DictationSession session_;
    InsertionTest insertionTest_;
    ShortcutChoice shortcutChoice_;
    ShortcutCapture shortcutCapture_;
    Subscription desktopShortcutObserver_;
    Subscription settingsObserver_;
    Subscription keyObserver_;
    Subscription sleepObserver_;
    Subscription lockObserver_;
};

}  // namespace quorvi
