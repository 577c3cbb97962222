#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/dictation/AudioRecorder.h"
#include "Quorvi/dictation/DictationStatus.h"
#include "Quorvi/dictation/FailedRecording.h"
#include "Quorvi/dictation/MicrophoneChoice.h"
#include "Quorvi/dictation/PasteLearning.h"
#include "Quorvi/dictation/Permissions.h"
#include "Quorvi/dictation/RecordingSounds.h"
#include "Quorvi/history/HistoryStore.h"
#include "Quorvi/platform/Network.h"
#include "Quorvi/transcription/SpeechService.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

// Runs one dictation at a time, from the start to the inserted text: captures the field, records,
// has the recording transcribed, applies the rules, keeps the text in the history and inserts it.
// What can't be inserted goes to the clipboard. Every failure ends in a sentence of the status.
//
// Main thread; owned by the controller. What takes time runs in cancellable tasks, whose results
// count only while their dictation is the current one.
class DictationSession {
public:
    using Id = std::uint64_t;

    // Everything outlives the session.
    struct Environment {
        Scheduler& scheduler;
        Executor& disk;
        AudioInput& audioInput;
        MicrophoneChoice& microphone;
        RecordingFiles& recordings;
        SoundOutput& soundOutput;
        SpeechService& service;
        HistoryStore& history;
        CorrectionStore& corrections;
        GlobalHotkey& hotkey;
        TextInsertion& insertion;
        PasteLearning& learning;
        Permissions& permissions;
        DictationStatus& status;
        Network* network;  // may be null
        // The user's choices at the moment of the call.
        std::function<TranscriptionOptions()> options;
        std::function<bool()> keepsFailed;
        std::function<RecordingSoundStyle(RecordingCue)> soundStyle;  // silent without sounds
    };

    explicit DictationSession(Environment environment);

    double elapsed() const { return elapsed_; }  // seconds of the recording
    double level() const { return level_; }      // of the microphone, 0 to 1
    const std::string& lastTranscript() const { return lastTranscript_; }
    void clearTranscript();

    // Called after a change of the above.
    std::function<void()> onChange;
    // Called when whatever is under way ends without a result.
    std::function<void()> onCancel;

    // Nothing is under way, and close() has not been called.
    bool canBegin() const;
    // The field is being captured and the microphone opened; the stage is not yet recording.
    bool isStarting() const { return isStarting_; }
    // Takes the user's input up to now as no typing into the field that is being dictated into.
    void acceptInput();
    // start() and finish() do nothing at the wrong time.
    void start();
    void finish();
    void cancel();
    // Ends the dictation and shows why.
    void fail(Message reason);
    // A recording that the speech service or the network failed waits for another try, and nothing
    // is under way.
    bool canRetry() const { return failed_.isThere() && canBegin(); }
    // Sends it again. The text goes into the field where it was dictated if that is unchanged, the
    // user's input up to now aside; otherwise to the clipboard.
    void retry();
    // Gives it up, and says so.
    void discardFailed();
    // The same in silence: what was shown about another try ends.
    void forgetFailed();
    // Starts or finishes as the mode of the shortcut asks for.
    void shortcutChanged(bool down);

    // What may happen during a dictation; each ends one with its sentence.
    void keyboardInterrupted();
    void permissionsRefreshed();

    // Copies the last transcript to the clipboard for good.
    void copyTranscript();
    void previewSound(RecordingCue cue);

    void removeStaleRecordings() { recorder_.removeStaleRecordings(); }

    // Makes earlier dictations outdated and returns the id of the one that begins.
    Id supersede() { return ++id_; }
    bool isCurrent(Id id) const { return id == id_; }

    // Begins no dictation any more.
    void close() { isClosed_ = true; }
    bool isIdle() const { return tasks_.isEmpty(); }

private:
    // What one dictation carries from its recording to the inserted text.
    struct Dictation {
        Id id;
        InsertionTarget target;
        TranscriptionOptions options;
        TextCorrections rules;
        DictationCostEstimate price;
        double duration = 0;  // seconds
        Date date;            // of the recording's end
        bool isRetry = false;
    };
    // A copy of a recording that is being sent.
    using Copy = std::shared_ptr<std::unique_ptr<RecordingInMemory>>;
    struct Recognition {
        std::string text;
        std::vector<TextCorrection> appliedRules;
    };

    void followRecorder();
    void recorderChanged(bool began);
    Task<void> unlockKeyring(Id id, std::stop_token stop);
    Task<void> begin(Id id, std::stop_token stop);
    void recordingBegan(InsertionTarget target);
    // Asks an application that was busy at the press for its field and caret while the user
    // speaks.
    Task<void> completeTarget(Id id, std::stop_token stop);
    // Counts typing into the target's field as input, up to the insertion.
    void watchTyping(const InsertionTarget& target);
    bool targetLacksItsCaret(Id id, const std::stop_token& stop) const;
    Message firstSentence();
    bool hearsEarly();
    void soundStart();
    void meterTick();
    // Whether a recording of this length would be sent.
    bool hasSpeech(double seconds) const;
    Dictation dictation(InsertionTarget target, double duration, Date date);
    Task<Bytes> copying(Task<Bytes> audio, Copy copy);
    Task<Bytes> keptAudio();
    void sendAgain(InsertionTarget target);
    void networkReturned();
    // `copy` is filled once there is sound, unless that is not to be kept, or is already.
    Task<void> process(Dictation dictation, Task<Bytes> audio, Copy copy, std::stop_token stop);
    // Ends what a dictation has under way.
    void giveUp();
    void serviceFailed(const Dictation& dictation, Message problem, Copy copy);
    void failedChanged();
    Recognition correct(const Dictation& dictation, const std::string& transcript);
    Task<void> insert(Dictation dictation, Recognition recognition,
                      TranscriptClipboard::Copy clipboard, std::stop_token stop);
    void pasteSent(const Dictation& dictation, const TextInsertion::Outcome& outcome);
    Task<void> offerManualPaste(std::string text, Id id, std::stop_token stop);
    Task<void> copyForUser(std::stop_token stop);
    bool isCurrent(Id id, const std::stop_token& stop) const {
        return id == id_ && !stop.stop_requested();
    }
    void resetMeter();

    Environment environment_;
    AudioRecorder recorder_;
    FailedRecording failed_;
    Subscription networkObserver_;  // from the first failure of the network on
    RecordingSounds sounds_;

    Id id_ = 0;  // changes with every start and cancellation
    bool isStarting_ = false;
    bool endsAtBeginning_ = false;  // the shortcut was released while starting
    bool isHeardEarly_ = false;     // speech, before the start sounded
    bool hasSoundedStart_ = false;
    bool hasOpenedConnection_ = false;
    bool isClosed_ = false;
    std::optional<InsertionTarget> target_;
    Subscription typing_;
    double elapsed_ = 0;
    double level_ = 0;
    double meterFrom_ = 0;  // seconds of recording before which the start cue may be heard
    int audibleTicks_ = 0;
    std::string lastTranscript_;
    Timer meterTimer_;
    Timer limitTimer_;  // by the clock: a device may deliver no samples
    TaskHandle startTask_;
    TaskHandle targetTask_;
    TaskHandle uploadTask_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
