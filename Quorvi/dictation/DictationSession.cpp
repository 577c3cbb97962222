#include "Quorvi/dictation/DictationSession.h"

#include <algorithm>
#include <array>
#include <utility>

#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr Duration meterInterval = 50ms;
constexpr Duration longestRecording = 3min;
constexpr std::array<Duration, 2> busyTargetWaits{400ms, 800ms};
constexpr double shortestRecording = 0.3;  // seconds
constexpr double leastEarlySpeech = 0.1;
constexpr double startCueLength = 0.18;
constexpr float speechThreshold = -48;  // dB relative to full scale
constexpr int leastAudibleTicks = 2;

}  // namespace

DictationSession::DictationSession(Environment environment)
    : environment_(std::move(environment)),
      recorder_(environment_.audioInput, environment_.recordings, environment_.disk,
                environment_.scheduler),
      failed_(environment_.scheduler),
      sounds_(environment_.soundOutput),
      tasks_(environment_.scheduler) {
    followRecorder();
    failed_.onChange = [this] { failedChanged(); };
}

void DictationSession::followRecorder() {
    recorder_.onRecordingChanged = [this](bool began) { recorderChanged(began); };
    recorder_.onFailure = [this](const Message& reason) {
        if (environment_.status.stage() != DictationStage::recording && !isStarting_) return;
        cancel();
        fail(reason);
    };
}

// The microphone opens before the field is accepted, so the start sounds later.
void DictationSession::recorderChanged(bool began) {
    if (!began && std::exchange(hasSoundedStart_, false))
        sounds_.play(RecordingCue::stop, environment_.soundStyle(RecordingCue::stop));
}

bool DictationSession::canBegin() const {
    return !isActive(environment_.status.stage()) && !isStarting_ && !isClosed_;
}

void DictationSession::shortcutChanged(bool down) {
    const auto stage = environment_.status.stage();
    const bool recording = stage == DictationStage::recording || isStarting_;
    switch (dictationAction(environment_.hotkey.mode(), down, recording, isBusy(stage))) {
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

void DictationSession::start() {
    if (!canBegin()) return;
    if (onCancel) onCancel();  // an insertion test would paste into this dictation
    environment_.status.withdrawOffer();
    environment_.permissions.refresh();
    if (!environment_.permissions.canDictate()) {
        fail(say::finishSetup());
        return;
    }
    if (environment_.service.keys().isLocked()) {
        fail(say::keyringLocked());
        startTask_ = tasks_.start([this, id = supersede()](std::stop_token stop) {
            return unlockKeyring(id, std::move(stop));
        });
        return;
    }
    environment_.learning.finishWatch();
    isStarting_ = true;
    endsAtBeginning_ = false;
    environment_.hotkey.setCancelEnabled(true);
    recorder_.prepare();
    if (onChange) onChange();  // whoever else listens to the microphone ends that
    startTask_ = tasks_.start(
        [this, id = supersede()](std::stop_token stop) { return begin(id, std::move(stop)); });
}

// Before anything is said: the question takes the focus from the field.
Task<void> DictationSession::unlockKeyring(Id id, std::stop_token stop) {
    std::optional<Message> problem;
    try {
        auto asking = environment_.service.keys().unlock(stop);
        co_await asking;
    } catch (const std::exception& error) {
        problem = messageOf(error);
    }
    if (!isCurrent(id, stop) || !canBegin()) co_return;
    if (problem) {
        fail(*std::move(problem));
        co_return;
    }
    environment_.status.enter(DictationStage::idle, say::clickATextField());
    environment_.status.hideOverlay();
}

Task<void> DictationSession::begin(Id id, std::stop_token stop) {
    std::optional<Message> problem;
    try {
        // Beside the capture of the field, which may be slow: words are kept from the press on.
        auto recording = recorder_.start(stop);
        recording.start();
        auto capturing =
            environment_.insertion.capture(environment_.hotkey.inputGeneration(), stop);
        auto target = co_await capturing;
        co_await recording;
        if (!isCurrent(id, stop)) co_return;
        recordingBegan(std::move(target));
    } catch (const std::exception& error) {
        problem = messageOf(error);
    }
    if (problem && isCurrent(id, stop)) {
        isStarting_ = false;
        fail(*std::move(problem));
    }
}

void DictationSession::recordingBegan(InsertionTarget target) {
    auto& status = environment_.status;
    isStarting_ = false;
    environment_.service.startProgram();
    target_ = std::move(target);
    watchTyping(*target_);
    if (!endsAtBeginning_) isHeardEarly_ = hearsEarly();
    audibleTicks_ = isHeardEarly_ ? leastAudibleTicks : 0;
    hasOpenedConnection_ = endsAtBeginning_;  // the request follows at once
    soundStart();
    resetMeter();
    status.keepOverlay();
    status.enter(DictationStage::recording, firstSentence());
    status.showOverlay();
    meterTimer_ = environment_.scheduler.every(meterInterval, [this] { meterTick(); });
    limitTimer_ = environment_.scheduler.after(longestRecording, [this] { finish(); });
    if (std::exchange(endsAtBeginning_, false)) {
        finish();
    } else if (!target_->selection) {
        targetTask_ = tasks_.start(
            [this, id = id_](std::stop_token stop) { return completeTarget(id, std::move(stop)); });
    }
}

Task<void> DictationSession::completeTarget(Id id, std::stop_token stop) {
    std::optional<Message> problem;
    try {
        for (const auto wait : busyTargetWaits) {
            auto pause = sleepFor(environment_.scheduler, wait, stop);
            co_await pause;
            if (!targetLacksItsCaret(id, stop)) co_return;
            auto asking = environment_.insertion.completed(*target_, stop);
            auto target = co_await asking;
            if (!targetLacksItsCaret(id, stop)) co_return;
            watchTyping(target);
            if (!std::exchange(target_, std::move(target))->element && target_->element)
                environment_.status.say(say::dictatingInto(target_->app()));
        }
    } catch (const QuorviError& error) {
        problem = messageOf(error);
    }
    if (problem && targetLacksItsCaret(id, stop)) fail(*std::move(problem));
}

// A terminal, which has no caret here, changes its text by itself.
void DictationSession::watchTyping(const InsertionTarget& target) {
    typing_ = target.element && target.selection ? environment_.hotkey.countTyping(*target.element)
                                                 : Subscription();
}

bool DictationSession::targetLacksItsCaret(Id id, const std::stop_token& stop) const {
    return isCurrent(id, stop) && environment_.status.stage() == DictationStage::recording &&
           target_ && !target_->selection &&
           target_->inputGeneration == environment_.hotkey.inputGeneration();
}

Message DictationSession::firstSentence() {
    // Without an element nobody can tell whether it is a password field: not all say it themselves.
    if (!target_->element) return say::uncheckedField(target_->app());
    auto news = environment_.microphone.takeNews();
    return news ? *std::move(news) : say::dictatingInto(target_->app());
}

// Until the start sounds only the user can be heard. The click of a key is too short to count.
bool DictationSession::hearsEarly() {
    return recorder_.duration() >= leastEarlySpeech && recorder_.meter() > speechThreshold;
}

void DictationSession::soundStart() {
    if (endsAtBeginning_) return;
    const auto style = environment_.soundStyle(RecordingCue::start);
    sounds_.play(RecordingCue::start, style);
    hasSoundedStart_ = true;
    meterFrom_ = recorder_.duration() + (style == RecordingSoundStyle::silent ? 0 : startCueLength);
}

void DictationSession::meterTick() {
    if (environment_.status.stage() != DictationStage::recording) return;
    elapsed_ = recorder_.duration();
    const auto power = recorder_.meter();
    level_ = meterLevel(power);
    if (meterFrom_ <= elapsed_ && power > speechThreshold) ++audibleTicks_;
    // Whoever cancels before anything was said has contacted nobody.
    if (hasSpeech(elapsed_) && !std::exchange(hasOpenedConnection_, true))
        environment_.service.openConnection();
    if (onChange) onChange();
}

bool DictationSession::hasSpeech(double seconds) const {
    return seconds >= shortestRecording && audibleTicks_ >= leastAudibleTicks;
}

void DictationSession::acceptInput() {
    if (target_) target_->inputGeneration = environment_.hotkey.inputGeneration();
}

void DictationSession::finish() {
    if (isStarting_) {
        if (recorder_.isCapturing() && recorder_.duration() >= shortestRecording) {
            // Words were spoken while the application was slow to tell its field.
            isHeardEarly_ = hearsEarly();
            recorder_.stopCapture();
            endsAtBeginning_ = true;
            return;
        }
        // The shortcut was released before the microphone was open.
        cancel();
        fail(say::noAudibleSpeech());
        return;
    }
    if (environment_.status.stage() != DictationStage::recording) return;
    meterTimer_.cancel();
    limitTimer_.cancel();
    const double duration = recorder_.duration();
    if (!hasSpeech(duration)) {
        fail(say::noAudibleSpeech());
        return;
    }
    recorder_.stopCapture();
    if (!target_) {
        fail(say::chooseFieldAgain());
        return;
    }
    level_ = 0;
    environment_.status.enter(DictationStage::transcribing, say::convertingSpeech());
    auto begun = dictation(*target_, duration, environment_.scheduler.date());
    uploadTask_ = tasks_.start([this, &begun](std::stop_token stop) {
        auto copy = std::make_shared<std::unique_ptr<RecordingInMemory>>();
        auto audio = recorder_.finish(stop);
        if (environment_.keepsFailed()) audio = copying(std::move(audio), copy);
        return process(std::move(begun), std::move(audio), std::move(copy), stop);
    });
}

DictationSession::Dictation DictationSession::dictation(InsertionTarget target, double duration,
                                                        Date date) {
    auto options = environment_.options();
    const auto price = environment_.service.price(options.model);
    return {.id = id_,
            .target = std::move(target),
            .options = std::move(options),
            .rules = environment_.corrections.rules(),
            .price = price,
            .duration = duration,
            .date = date};
}

Task<Bytes> DictationSession::copying(Task<Bytes> audio, Copy copy) {
    auto bytes = co_await audio;
    *copy = environment_.recordings.keepInMemory(bytes);
    co_return bytes;
}

Task<void> DictationSession::process(Dictation dictation, Task<Bytes> audio, Copy copy,
                                     std::stop_token stop) {
    auto copying = environment_.insertion.copyClipboardAhead(dictation.target, stop);
    copying.start();
    std::string transcript;
    std::optional<Message> problem;
    try {
        auto transcribing =
            environment_.service.transcribe(std::move(audio), dictation.options, stop);
        transcript = co_await transcribing;
    } catch (const std::exception& error) {
        problem = messageOf(error);
    }
    if (!isCurrent(dictation.id, stop)) co_return;
    if (problem) {
        serviceFailed(dictation, *std::move(problem), std::move(copy));
        co_return;
    }
    copy.reset();
    failed_.forget();
    auto recognition = correct(dictation, transcript);
    auto clipboard = co_await copying;
    auto inserting =
        insert(std::move(dictation), std::move(recognition), std::move(clipboard), stop);
    co_await inserting;
}

DictationSession::Recognition DictationSession::correct(const Dictation& dictation,
                                                        const std::string& transcript) {
    auto corrected = dictation.rules.applying(transcript);
    lastTranscript_ = corrected.text;
    // Saved before it is inserted: a failed paste still leaves the words in the history. A history
    // that fails reports that by itself, and must not keep the words from the user.
    try {
        environment_.history.record(
            corrected.text, dictation.duration, dictation.target.appName,
            std::string(rawValue(dictation.options.language)), dictation.price,
            dictation.isRetry ? dictation.date : environment_.scheduler.date());
    } catch (const std::exception&) {
    }
    environment_.status.enter(DictationStage::inserting,
                              say::insertingInto(dictation.target.app()));
    return {std::move(corrected.text), std::move(corrected.appliedRules)};
}

Task<void> DictationSession::insert(Dictation dictation, Recognition recognition,
                                    TranscriptClipboard::Copy clipboard, std::stop_token stop) {
    auto& corrections = environment_.corrections;
    if (corrections.learnsAutomatically())
        corrections.setLearningStatus(say::checkingLearning(dictation.target.app()));

    auto request = environment_.learning.request(
        dictation.target, std::move(recognition.appliedRules),
        [this, id = dictation.id, stop] { return isCurrent(id, stop); });
    request.clipboard = std::move(clipboard);
    request.onVerifiedPaste =
        [this, watch = std::move(request.onVerifiedPaste)](const CorrectionContext& context) {
            typing_ = {};
            watch(context);
        };
    std::optional<TextInsertion::Outcome> outcome;
    try {
        auto inserting = environment_.insertion.insert(recognition.text, dictation.target,
                                                       std::move(request), stop);
        outcome = co_await inserting;
    } catch (const std::exception&) {
    }
    if (!isCurrent(dictation.id, stop)) co_return;
    typing_ = {};
    if (outcome) {
        pasteSent(dictation, *outcome);
        co_return;
    }
    corrections.setLearningStatus(say::learningNeedsPaste());
    auto offering = offerManualPaste(std::move(recognition.text), dictation.id, stop);
    co_await offering;
}

void DictationSession::pasteSent(const Dictation& dictation,
                                 const TextInsertion::Outcome& outcome) {
    auto& corrections = environment_.corrections;
    const auto app = dictation.target.app();
    if (!outcome.verified && corrections.learnsAutomatically())
        corrections.setLearningStatus(say::textNotVerified(app));
    environment_.hotkey.setCancelEnabled(false);
    auto& status = environment_.status;
    if (!outcome.isTaken) {
        status.offerCopy(DictationStage::clipboard, say::textNotTaken(app));
        status.showOverlay(12s);
        return;
    }
    status.enter(DictationStage::success, outcome.clipboardIsLost ? say::oldClipboardLost()
                                          : outcome.isCommitted   ? say::textSent(app)
                                                                  : say::pasteSent(app));
    status.hideOverlayAfter(2s);
}

Task<void> DictationSession::offerManualPaste(std::string text, Id id, std::stop_token stop) {
    auto copying = environment_.insertion.copyForManualPaste(std::move(text), stop);
    const bool copied = co_await copying;
    if (!isCurrent(id, stop)) co_return;
    environment_.hotkey.setCancelEnabled(false);
    environment_.status.offerCopy(copied ? DictationStage::clipboard : DictationStage::failure,
                                  copied ? say::textCopied() : say::clipboardUnavailableForCopy());
    environment_.status.showOverlay(12s);
}

void DictationSession::copyTranscript() {
    if (lastTranscript_.empty()) return;
    tasks_.start([this](std::stop_token stop) { return copyForUser(std::move(stop)); });
}

Task<void> DictationSession::copyForUser(std::stop_token stop) {
    const auto id = id_;
    auto copying = environment_.insertion.copyForManualPaste(lastTranscript_, stop);
    const bool copied = co_await copying;
    // The message is that of a dictation which has begun meanwhile.
    if (!isCurrent(id, stop)) co_return;
    auto& status = environment_.status;
    auto outcome = copied ? say::textCopied() : say::couldNotCopy();
    if (!status.offersCopy()) {
        status.say(std::move(outcome));
        co_return;
    }
    status.offerCopy(copied ? DictationStage::clipboard : DictationStage::failure,
                     std::move(outcome));
    status.showOverlay(copied ? 4s : 12s);
}

// --- another try ---

void DictationSession::serviceFailed(const Dictation& dictation, Message problem, Copy copy) {
    const bool isWorthIt = FailedRecording::isWorthAnotherTry(problem);
    if (dictation.isRetry && !isWorthIt) failed_.forget();
    if (!isWorthIt || (dictation.isRetry ? !failed_.isThere() : !*copy)) {
        fail(std::move(problem));
        return;
    }
    if (*copy)
        failed_.keep(std::move(*copy), {dictation.target, dictation.duration, dictation.date},
                     std::move(problem));
    else
        failed_.failedAgain(std::move(problem));
    if (failed_.isOfTheNetwork() && environment_.network)
        networkObserver_ = environment_.network->onReturn([this] { networkReturned(); });
    giveUp();
    environment_.status.offerRetry(failed_.message());
    environment_.status.showOverlay(12s);
}

void DictationSession::retry() {
    if (!canBegin()) return;
    if (!failed_.isThere()) {
        environment_.status.say(say::nothingToTryAgain());
        return;
    }
    auto target = failed_.circumstances().target;
    target.inputGeneration = environment_.hotkey.inputGeneration();
    sendAgain(std::move(target));
}

// Input since the dictation leaves the text on the clipboard: nobody has asked for it now.
void DictationSession::networkReturned() {
    if (canRetry() && failed_.takeAutomaticTry()) sendAgain(failed_.circumstances().target);
}

void DictationSession::sendAgain(InsertionTarget target) {
    environment_.learning.finishWatch();
    supersede();
    environment_.hotkey.setCancelEnabled(true);
    auto& status = environment_.status;
    status.keepOverlay();
    status.enter(DictationStage::transcribing, say::convertingSpeech());
    status.showOverlay();
    environment_.service.startProgram();
    watchTyping(target);
    auto again = dictation(std::move(target), failed_.circumstances().duration,
                           failed_.circumstances().date);
    again.isRetry = true;
    uploadTask_ = tasks_.start([this, &again](std::stop_token stop) {
        return process(std::move(again), keptAudio(),
                       std::make_shared<std::unique_ptr<RecordingInMemory>>(), stop);
    });
}

Task<Bytes> DictationSession::keptAudio() {
    co_return failed_.audio();
}

void DictationSession::discardFailed() {
    if (!canRetry()) return;
    failed_.forget();
    environment_.status.enter(DictationStage::idle, say::recordingDiscarded());
    environment_.status.hideOverlay();
}

void DictationSession::forgetFailed() {
    if (!failed_.isThere()) return;
    failed_.forget();
    failedChanged();
}

void DictationSession::failedChanged() {
    auto& status = environment_.status;
    if (status.offersRetry()) {
        status.say(failed_.isThere() ? failed_.message() : failed_.problem());
        if (!failed_.isThere()) status.withdrawOffer();
    }
    if (onChange) onChange();
}

// ---

void DictationSession::clearTranscript() {
    if (!std::exchange(lastTranscript_, {}).empty() && onChange) onChange();
}

void DictationSession::cancel() {
    supersede();
    isStarting_ = false;
    startTask_.cancel();
    targetTask_.cancel();
    uploadTask_.cancel();
    if (onCancel) onCancel();
    meterTimer_.cancel();
    limitTimer_.cancel();
    recorder_.discard();
    environment_.insertion.restoreClipboard();
    environment_.learning.abandonWatch();
    target_.reset();
    typing_ = {};
    resetMeter();
    environment_.hotkey.setCancelEnabled(false);
    environment_.status.keepOverlay();
    environment_.status.enter(DictationStage::idle, say::dictationCancelled());
    environment_.status.hideOverlay();
}

void DictationSession::giveUp() {
    typing_ = {};
    meterTimer_.cancel();
    limitTimer_.cancel();
    recorder_.discard();
    level_ = 0;
    environment_.hotkey.setCancelEnabled(false);
}

void DictationSession::fail(Message reason) {
    giveUp();
    environment_.status.enter(DictationStage::failure, std::move(reason));
    environment_.status.showOverlay(6s);
}

void DictationSession::keyboardInterrupted() {
    if (!isActive(environment_.status.stage()) && !isStarting_) return;
    cancel();
    fail(say::keyboardInterrupted());
}

void DictationSession::permissionsRefreshed() {
    const auto& permissions = environment_.permissions;
    if (environment_.status.stage() != DictationStage::recording) return;
    if (permissions.microphone() && permissions.accessibility()) return;
    cancel();
    fail(say::permissionChanged());
}

void DictationSession::previewSound(RecordingCue cue) {
    if (!isActive(environment_.status.stage())) sounds_.play(cue, environment_.soundStyle(cue));
}

void DictationSession::resetMeter() {
    elapsed_ = 0;
    level_ = 0;
}

}  // namespace quorvi
