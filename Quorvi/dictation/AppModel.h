#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/corrections/CorrectionObserver.h"
#include "Quorvi/corrections/CorrectionStore.h"
#include "Quorvi/dictation/AudioRecorder.h"
#include "Quorvi/dictation/DictationStage.h"
#include "Quorvi/dictation/RecordingCue.h"
#include "Quorvi/dictation/RecordingSounds.h"
#include "Quorvi/dictation/RecordingTheme.h"
#include "Quorvi/history/HistoryStore.h"
#include "Quorvi/input/GlobalHotkey.h"
#include "Quorvi/insertion/TextInsertion.h"
#include "Quorvi/platform/KeyStore.h"
#include "Quorvi/platform/LocalKeyMonitor.h"
#include "Quorvi/platform/Preferences.h"
#include "Quorvi/platform/SyncControl.h"
#include "Quorvi/platform/SystemPermissions.h"
#include "Quorvi/transcription/TranscriptionClient.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

// The single controller of the application. Runs one dictation from the shortcut to the inserted
// text, and holds all state that the interface shows. Everything in it happens on the main thread;
// what takes time runs in cancellable tasks, whose results count only while their dictation is
// still the current one. Lives as long as the process; shutdown() comes before its destruction.
class AppModel {
public:
    // Everything the controller stands on; all of it outlives the controller.
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
        SoundOutput& soundOutput;
        SystemPermissions& permissions;
        LocalKeyMonitor& localKeys;
        Preferences& preferences;
        KeyStore& keyStore;
        HttpTransport& transport;
        HistoryStore& history;
        CorrectionStore& corrections;
        std::function<SyncControl&()> accountSync;  // created on first use
        std::string service;                        // see serviceAddress()
        std::filesystem::path recordings;           // folder of the recordings in progress
    };

    explicit AppModel(Environment environment);
    ~AppModel();
    AppModel(const AppModel&) = delete;
    AppModel& operator=(const AppModel&) = delete;

    // Told after any change of the state below; observers re-read it.
    [[nodiscard]] Subscription onChange(std::function<void()> observer) {
        return changes_.subscribe(std::move(observer));
    }

    // What a dictation is doing.
    DictationStage stage() const { return stage_; }
    const std::string& message() const { return message_; }
    const std::string& lastTranscript() const { return lastTranscript_; }
    bool canCopyFromOverlay() const { return canCopyFromOverlay_; }
    double elapsed() const { return elapsed_; }  // seconds
    double level() const { return level_; }      // 0 to 1

    // What the program may do.
    bool hasKey() const { return hasKey_; }
    bool microphoneAllowed() const { return microphoneAllowed_; }
    bool accessibilityAllowed() const { return accessibilityAllowed_; }
    bool keyboardReady() const { return keyboardReady_; }
    bool ready() const {
        return hasKey_ && microphoneAllowed_ && accessibilityAllowed_ && keyboardReady_;
    }
    const std::string& keyMessage() const { return keyMessage_; }
    int selectedPage() const { return selectedPage_; }
    void setSelectedPage(int page) { set(selectedPage_, page); }

    // Preferences; each is stored when it changes.
    DictationMode mode() const { return hotkey_.mode(); }
    void setMode(DictationMode mode);
    const Hotkey& shortcut() const { return hotkey_.shortcut(); }
    void setShortcut(Hotkey shortcut);
    std::string shortcutInstruction() const {
        return quorvi::shortcutInstruction(shortcut(), mode());
    }
    TranscriptionModel transcriptionModel() const { return transcriptionModel_; }
    void setTranscriptionModel(TranscriptionModel model);
    const std::string& vocabulary() const { return vocabulary_; }
    void setVocabulary(std::string vocabulary);
    RecordingTheme recordingTheme() const { return recordingTheme_; }
    void setRecordingTheme(RecordingTheme theme);
    RecordingSoundStyle soundStyle(RecordingCue cue) const {
        return cue == RecordingCue::start ? startSoundStyle_ : stopSoundStyle_;
    }
    void setSoundStyle(RecordingCue cue, RecordingSoundStyle style);
    bool soundCuesEnabled() const { return soundCuesEnabled_; }
    void setSoundCuesEnabled(bool enabled);

    // The settings that travel between the user's computers, and those that have come from another
    // one. A received value that is missing, of another type or unknown is left out; the others
    // change what differs from them, like a change of the user's.
    using SyncSettings = std::map<std::string, PreferenceValue, std::less<>>;
    SyncSettings syncSettings() const;
    void applySyncSettings(const SyncSettings& settings);

    // One dictation. start() and finish() do nothing at the wrong time.
    void start();
    void finish();
    void cancel();
    void fail(const std::string& message);
    // Shows what became of a dictation that a crash interrupted, unless there is a new one.
    void reportInterruption(const std::string& sentence);
    void copyTranscript();
    void clearTranscript() { set(lastTranscript_, std::string()); }
    void dismissOverlay(std::chrono::seconds delay);
    // Recovers from a stuck state.
    void resetDictation();

    // Re-reads what the program may do and keeps the keyboard monitor running; also done every two
    // seconds.
    void refreshPermissions();
    void requestMicrophone();
    void requestAccessibility();
    // Opens the desktop's own settings at, or near, a subject.
    void openPrivacy(PrivacyPane pane);

    // Stores or deletes the API key, or its copy for the user's other machines; the outcome is in
    // keyMessage(). True when it was done.
    Task<bool> saveKey(std::string key);
    Task<void> removeKey();
    Task<bool> setKeySync(bool on);

    void previewSound(RecordingCue cue);

    // Pastes a sample sentence into the field that the user chooses within ten seconds, at once
    // when the shortcut is pressed; with `learning`, one to try the learning of corrections on.
    void armInsertionTest(bool learning = false);
    bool insertionTestArmed() const { return insertionTestArmed_; }

    // From the beginning to the end, the next suitable key press in a window of this program
    // becomes the shortcut. Escape ends it without a change.
    void beginShortcutCapture();
    void endShortcutCapture();
    bool isChoosingShortcut() const { return isChoosingShortcut_; }

    // Stops everything before the program quits. What still gives the clipboard back or learns
    // from the last edit is done once isIdle() holds.
    void shutdown();
    bool isIdle() const { return tasks_.isEmpty() && correctionObserver_.isIdle(); }

    // Installed by the application's shell.
    std::function<void()> showOverlay;
    std::function<void()> hideOverlay;

    GlobalHotkey& hotkey() { return hotkey_; }

private:
    using SessionID = std::uint64_t;

    // What one dictation carries from its recording to the inserted text.
    struct Dictation {
        SessionID session;
        InsertionTarget target;
        TranscriptionOptions options;
        TextCorrections rules;
        double duration = 0;  // seconds
    };
    struct Recognition {
        std::string text;
        std::vector<TextCorrection> appliedRules;
    };

    struct SyncedSetting;

    void readPreferences();
    static const std::vector<SyncedSetting>& syncedSettings();
    void receiveVocabulary(const std::string& text);
    void wireCallbacks();
    void shortcutTransition(bool down);
    Task<void> begin(SessionID session, std::stop_token stop);
    void recordingBegan(InsertionTarget target);
    void meterTick();
    Task<void> process(Dictation dictation, std::stop_token stop);
    Task<std::string> transcribe(Dictation dictation, std::stop_token stop);
    Recognition correct(const Dictation& dictation, const std::string& transcript);
    Task<void> insert(Dictation dictation, Recognition recognition,
                      TranscriptClipboard::Copy clipboard, std::stop_token stop);
    TextInsertion::Request insertionRequest(const Dictation& dictation,
                                            std::vector<TextCorrection> appliedRules,
                                            const std::stop_token& stop);
    void pasteSent(const Dictation& dictation, bool verified);
    Task<void> offerManualPaste(std::string text, SessionID session, std::stop_token stop);
    Task<void> copyForUser(std::stop_token stop);
    void correctionLearned(const TextCorrection& rule);
    Task<void> countDown(std::stop_token stop);
    void runInsertionTest();
    Task<void> insertSample(SessionID session, std::stop_token stop);
    bool captureShortcut(const LocalKeyEvent& event);
    void refreshKey();
    void show();
    void hide();
    bool isCurrent(SessionID session, const std::stop_token& stop) const {
        return session == sessionID_ && !stop.stop_requested();
    }
    void changed() { changes_.notify(); }
    template <class T>
    void set(T& field, T value) {
        if (field == value) return;
        field = std::move(value);
        changed();
    }

    Environment environment_;
    Observable changes_;

    DictationStage stage_ = DictationStage::idle;
    std::string message_ = "Click a text field in any app, then use your shortcut.";
    std::string lastTranscript_;
    std::string keyMessage_;
    bool canCopyFromOverlay_ = false;
    bool insertionTestArmed_ = false;
    bool insertionTestLearning_ = false;
    bool isChoosingShortcut_ = false;
    int selectedPage_ = 0;
    double elapsed_ = 0;
    double level_ = 0;
    bool hasKey_ = false;
    bool microphoneAllowed_ = false;
    bool accessibilityAllowed_ = false;
    bool keyboardReady_ = false;

    RecordingTheme recordingTheme_ = RecordingTheme::glass;
    RecordingSoundStyle startSoundStyle_ = RecordingSoundStyle::classic;
    RecordingSoundStyle stopSoundStyle_ = RecordingSoundStyle::classic;
    bool soundCuesEnabled_ = true;
    TranscriptionModel transcriptionModel_ = TranscriptionModel::transcribe;
    std::string vocabulary_;

    AudioRecorder recorder_;
    RecordingSounds sounds_;
    TextInsertion insertion_;
    GlobalHotkey hotkey_;
    TranscriptionClient client_;
    CorrectionObserver correctionObserver_;

    SessionID sessionID_ = 0;  // replaced at every start and cancel
    // The destination is being captured and the microphone opened; the stage is not yet recording.
    bool starting_ = false;
    bool shutDown_ = false;
    std::optional<InsertionTarget> target_;
    double cueMeterIgnoreUntil_ = 0;  // seconds of recording
    int audibleFrames_ = 0;
    Timer meterTimer_;
    Timer permissionTimer_;
    Timer dismissTimer_;
    TaskHandle startTask_;
    TaskHandle uploadTask_;
    TaskHandle insertionTestTask_;  // the countdown
    StandaloneModifierCapture modifierCapture_;
    Subscription shortcutMonitor_;
    Subscription sleepObserver_;
    Subscription wakeObserver_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
