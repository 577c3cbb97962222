#include <algorithm>
#include <utility>

#include "Quorvi/dictation/AppModel.h"

// One dictation, from the shortcut to the inserted text.
namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr Duration meterInterval = 50ms;
constexpr double longestRecording = 180;  // seconds
constexpr double shortestRecording = 0.3;
constexpr double startCueLength = 0.18;
constexpr float speechThreshold = -48;  // dB relative to full scale
constexpr int leastAudibleFrames = 2;

constexpr auto noSpeech = "No audible speech detected. Hold the key a little longer and try again.";
constexpr auto copied = "Text copied — press ⌘V in any text field.";

}  // namespace

void AppModel::shortcutTransition(bool down) {
    if (isChoosingShortcut_) return;
    if (insertionTestArmed_) {
        if (down) runInsertionTest();
        return;
    }
    const bool recording = stage_ == DictationStage::recording || starting_;
    switch (dictationAction(mode(), down, recording, isBusy(stage_))) {
        case DictationAction::start:
            start();
            break;
        case DictationAction::finish:
            finish();
            break;
        case DictationAction::none:
            break;
    }
}

void AppModel::start() {
    if (isActive(stage_) || starting_ || shutDown_) return;
    set(canCopyFromOverlay_, false);
    refreshPermissions();
    if (!ready()) {
        fail(
            "Open Quorvi from the menu bar, then Settings to finish API key and permission setup.");
        return;
    }
    correctionObserver_.stop(true);
    const auto session = ++sessionID_;
    starting_ = true;
    recorder_.prepare();
    startTask_ =
        tasks_.start([this, session](std::stop_token stop) { return begin(session, stop); });
}

Task<void> AppModel::begin(SessionID session, std::stop_token stop) {
    std::optional<std::string> problem;
    try {
        auto capturing = insertion_.capture(hotkey_.inputGeneration(), stop);
        auto target = co_await capturing;
        auto recording = recorder_.start(stop);
        co_await recording;
        if (!isCurrent(session, stop)) co_return;
        recordingBegan(std::move(target));
    } catch (const std::exception& error) {
        problem = error.what();
    }
    if (problem && isCurrent(session, stop)) {
        starting_ = false;
        fail(*problem);
    }
}

void AppModel::recordingBegan(InsertionTarget target) {
    starting_ = false;
    client_.openConnection();
    target_ = std::move(target);
    const bool cueSounds = soundCuesEnabled_ && startSoundStyle_ != RecordingSoundStyle::silent;
    cueMeterIgnoreUntil_ = cueSounds ? startCueLength : 0;
    dismissTimer_.cancel();
    audibleFrames_ = 0;
    elapsed_ = 0;
    level_ = 0;
    stage_ = DictationStage::recording;
    message_ = "Dictating into " + target_->appName;
    hotkey_.setCancelEnabled(true);
    changed();
    show();
    meterTimer_ = environment_.scheduler.every(meterInterval, [this] { meterTick(); });
}

void AppModel::meterTick() {
    if (stage_ != DictationStage::recording) return;
    elapsed_ = recorder_.duration();
    const auto power = recorder_.meter();
    level_ = std::clamp((static_cast<double>(power) + 55) / 50, 0.0, 1.0);
    if (cueMeterIgnoreUntil_ <= elapsed_ && power > speechThreshold) ++audibleFrames_;
    changed();
    if (elapsed_ >= longestRecording) finish();
}

void AppModel::finish() {
    if (starting_) {
        // The shortcut was let go before the microphone was open.
        cancel();
        fail(noSpeech);
        return;
    }
    if (stage_ != DictationStage::recording) return;
    meterTimer_.cancel();
    const double duration = recorder_.duration();
    if (duration < shortestRecording || audibleFrames_ < leastAudibleFrames) {
        recorder_.discard();
        fail(noSpeech);
        return;
    }
    recorder_.stopCapture();
    if (!target_) {
        fail("Choose a text field and start dictating again.");
        return;
    }
    stage_ = DictationStage::transcribing;
    level_ = 0;
    message_ = "Converting speech to text…";
    changed();
    Dictation dictation{.session = sessionID_,
                        .target = *target_,
                        .options = {DictationLanguage::automatic, transcriptionModel_, vocabulary_},
                        .rules = environment_.corrections.rules(),
                        .duration = duration};
    uploadTask_ = tasks_.start(
        [this, &dictation](std::stop_token stop) { return process(std::move(dictation), stop); });
}

Task<void> AppModel::process(Dictation dictation, std::stop_token stop) {
    auto copying = insertion_.copyClipboardAhead(stop);
    copying.start();
    std::string transcript;
    std::optional<std::string> problem;
    try {
        auto transcribing = transcribe(dictation, stop);
        transcript = co_await transcribing;
    } catch (const std::exception& error) {
        problem = error.what();
    }
    if (!isCurrent(dictation.session, stop)) co_return;
    if (problem) {
        fail(*problem);
        co_return;
    }
    auto recognition = correct(dictation, transcript);
    auto clipboard = co_await copying;
    auto inserting =
        insert(std::move(dictation), std::move(recognition), std::move(clipboard), stop);
    co_await inserting;
}

Task<std::string> AppModel::transcribe(Dictation dictation, std::stop_token stop) {
    auto closing = recorder_.finish(stop);
    auto readingKey = environment_.keyStore.read(stop);
    closing.start();
    readingKey.start();
    auto audio = co_await closing;
    auto apiKey = co_await readingKey;
    auto asking = client_.transcribe(std::move(audio), std::move(apiKey), dictation.options, stop);
    co_return co_await asking;
}

AppModel::Recognition AppModel::correct(const Dictation& dictation, const std::string& transcript) {
    auto corrected = dictation.rules.applying(transcript);
    lastTranscript_ = corrected.text;
    // Saved before it is inserted: a failed paste still leaves the words in the history. A history
    // that fails reports it by itself and must not keep the words from the user.
    try {
        environment_.history.record(corrected.text, dictation.duration, dictation.target.appName,
                                    std::string(rawValue(dictation.options.language)),
                                    dictation.options.model, environment_.scheduler.date());
    } catch (const std::exception&) {
    }
    stage_ = DictationStage::inserting;
    message_ = "Inserting into " + dictation.target.appName + "…";
    changed();
    return {std::move(corrected.text), std::move(corrected.appliedRules)};
}

TextInsertion::Request AppModel::insertionRequest(const Dictation& dictation,
                                                  std::vector<TextCorrection> appliedRules,
                                                  const std::stop_token& stop) {
    TextInsertion::Request request;
    request.learnCorrections = environment_.corrections.learnsAutomatically();
    request.currentInputGeneration = [this] { return hotkey_.inputGeneration(); };
    request.onVerifiedPaste = [this, stop, session = dictation.session, target = dictation.target,
                               rules = std::move(appliedRules)](const CorrectionContext& context) {
        if (!isCurrent(session, stop)) return;
        correctionObserver_.start(context, target, environment_.corrections, rules, true,
                                  [this] { return hotkey_.inputGeneration(); });
    };
    request.onLearningEvent = [this, app = dictation.target.appName](
                                  const std::string& code, const TextInsertion::Counts& counts) {
        environment_.corrections.recordLearningEvent(code, app, counts);
    };
    return request;
}

Task<void> AppModel::insert(Dictation dictation, Recognition recognition,
                            TranscriptClipboard::Copy clipboard, std::stop_token stop) {
    auto& corrections = environment_.corrections;
    const auto& app = dictation.target.appName;
    if (corrections.learnsAutomatically())
        corrections.setLearningStatus("Checking automatic learning in " + app + "…");

    auto request = insertionRequest(dictation, std::move(recognition.appliedRules), stop);
    request.clipboard = std::move(clipboard);
    bool pasted = false;
    bool verified = false;
    try {
        auto inserting =
            insertion_.insert(recognition.text, dictation.target, std::move(request), stop);
        verified = (co_await inserting).has_value();
        pasted = true;
    } catch (const std::exception&) {
    }
    if (!isCurrent(dictation.session, stop)) co_return;
    if (pasted) {
        pasteSent(dictation, verified);
        co_return;
    }
    corrections.setLearningStatus(
        "Automatic learning needs a verified paste. Use Remember correction for this copied "
        "transcript.");
    auto offering = offerManualPaste(std::move(recognition.text), dictation.session, stop);
    co_await offering;
}

void AppModel::pasteSent(const Dictation& dictation, bool verified) {
    const auto& app = dictation.target.appName;
    if (!verified && environment_.corrections.learnsAutomatically())
        environment_.corrections.setLearningStatus("Could not verify readable text in " + app +
                                                   ". Use Remember correction for this dictation.");
    canCopyFromOverlay_ = false;
    stage_ = DictationStage::success;
    message_ = "Paste sent to " + app + ".";
    hotkey_.setCancelEnabled(false);
    changed();
    dismissOverlay(2s);
}

void AppModel::cancel() {
    canCopyFromOverlay_ = false;
    ++sessionID_;
    starting_ = false;
    startTask_.cancel();
    uploadTask_.cancel();
    insertionTestTask_.cancel();
    insertionTestArmed_ = false;
    meterTimer_.cancel();
    dismissTimer_.cancel();
    recorder_.discard();
    insertion_.restoreClipboard();
    correctionObserver_.stop(false);
    target_.reset();
    hotkey_.setCancelEnabled(false);
    stage_ = DictationStage::idle;
    level_ = 0;
    elapsed_ = 0;
    message_ = "Cancelled. Ready for your next dictation.";
    changed();
    hide();
}

void AppModel::fail(const std::string& message) {
    canCopyFromOverlay_ = false;
    meterTimer_.cancel();
    recorder_.discard();
    level_ = 0;
    stage_ = DictationStage::failure;
    message_ = message;
    hotkey_.setCancelEnabled(false);
    changed();
    show();
    dismissOverlay(6s);
}

Task<void> AppModel::offerManualPaste(std::string text, SessionID session, std::stop_token stop) {
    auto copying = insertion_.copyForManualPaste(std::move(text), stop);
    const bool ok = co_await copying;
    if (!isCurrent(session, stop)) co_return;
    canCopyFromOverlay_ = true;
    hotkey_.setCancelEnabled(false);
    stage_ = ok ? DictationStage::clipboard : DictationStage::failure;
    message_ = ok ? copied
                  : "The clipboard is unavailable. Use Copy text to try again, or select the "
                    "transcript in Quorvi.";
    changed();
    show();
    dismissOverlay(12s);
}

void AppModel::copyTranscript() {
    if (lastTranscript_.empty()) return;
    tasks_.start([this](std::stop_token stop) { return copyForUser(stop); });
}

Task<void> AppModel::copyForUser(std::stop_token stop) {
    const auto session = sessionID_;
    auto copying = insertion_.copyForManualPaste(lastTranscript_, stop);
    const bool ok = co_await copying;
    // A dictation that began meanwhile owns the status line.
    if (!isCurrent(session, stop)) co_return;
    message_ = ok ? copied : "Could not copy. You can select the transcript in Quorvi.";
    if (canCopyFromOverlay_) {
        stage_ = ok ? DictationStage::clipboard : DictationStage::failure;
        show();
        dismissOverlay(ok ? 4s : 12s);
    }
    changed();
}

}  // namespace quorvi
