#include "Quorvi/dictation/FailedRecording.h"

#include <algorithm>
#include <utility>

namespace quorvi {

bool FailedRecording::isWorthAnotherTry(const Message& problem) {
    constexpr Sentence reasonsOfTheRecording[] = {Sentence::noSpeechRecognized,
                                                  Sentence::recordingEmptyOrTooLarge,
                                                  Sentence::recordingTooLarge};
    return std::ranges::find(reasonsOfTheRecording, problem.id()) ==
           std::end(reasonsOfTheRecording);
}

void FailedRecording::keep(std::unique_ptr<RecordingInMemory> audio, Circumstances circumstances,
                           Message problem) {
    audio_ = std::move(audio);
    circumstances_ = std::move(circumstances);
    problem_ = std::move(problem);
    minutesLeft_ = lifetime.count();
    failedAt_ = scheduler_.now();
    hasTriedItself_ = false;
    minutes_ = scheduler_.every(std::chrono::minutes(1), [this] { minutePassed(); });
}

bool FailedRecording::takeAutomaticTry() {
    constexpr std::chrono::minutes limit{2};
    if (!isOfTheNetwork() || scheduler_.now() - failedAt_ > limit) return false;
    return !std::exchange(hasTriedItself_, true);
}

void FailedRecording::forget() {
    minutes_.cancel();
    audio_.reset();
    circumstances_ = {};
}

Message FailedRecording::message() const {
    return problem_.followedBy(minutesLeft_ > 1 ? say::tryAgainMinutes(minutesLeft_)
                                                : say::tryAgainLastMinute());
}

void FailedRecording::minutePassed() {
    if (--minutesLeft_ == 0) forget();
    if (onChange) onChange();
}

}  // namespace quorvi
