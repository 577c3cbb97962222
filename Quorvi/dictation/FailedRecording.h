#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "Quorvi/insertion/InsertionTarget.h"
#include "Quorvi/platform/RecordingFiles.h"
#include "QuorviCore/async/Date.h"
#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// The recording of the last dictation that the speech service or the network failed, for another
// try within ten minutes. In memory only. Main thread; owned by the session.
class FailedRecording {
public:
    static constexpr std::chrono::minutes lifetime{10};

    // What another try needs besides the sound.
    struct Circumstances {
        InsertionTarget target;
        double duration = 0;  // seconds
        Date date;            // of the recording's end
    };

    explicit FailedRecording(Scheduler& scheduler) : scheduler_(scheduler) {}

    // Whether another try may help after this failure: not when the recording is the reason.
    static bool isWorthAnotherTry(const Message& problem);

    bool isThere() const { return audio_ != nullptr; }
    // Keeps one in place of any other, until ten minutes after its first failure.
    void keep(std::unique_ptr<RecordingInMemory> audio, Circumstances circumstances,
              Message problem);
    // The same has failed once more.
    void failedAgain(Message problem) { problem_ = std::move(problem); }
    void forget();

    // Whether no answer came at all.
    bool isOfTheNetwork() const {
        return problem_.is(Sentence::requestFailed) || problem_.is(Sentence::serviceNoResponse);
    }
    // Returns true once, if the network failed it no longer than two minutes ago.
    bool takeAutomaticTry();

    // While it is there.
    const Circumstances& circumstances() const { return circumstances_; }
    Bytes audio() const { return audio_->read(); }
    // Why it failed, and for how much longer it can be tried again.
    Message message() const;
    // Why it failed last, also after its end.
    const Message& problem() const { return problem_; }

    // Called when message() changes, and at the end of its time.
    std::function<void()> onChange;

private:
    void minutePassed();

    Scheduler& scheduler_;
    std::unique_ptr<RecordingInMemory> audio_;
    Circumstances circumstances_;
    Message problem_;
    int minutesLeft_ = 0;
    TimePoint failedAt_;
    bool hasTriedItself_ = false;
    Timer minutes_;
};

}  // namespace quorvi
