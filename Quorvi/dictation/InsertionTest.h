#pragma once

#include "Quorvi/dictation/DictationSession.h"

namespace quorvi {

// Pastes a sample into the field that the user clicks within ten seconds, so that the user can try
// the insertion without dictating. Main thread; owned by the controller. Everything that it is made
// with outlives it.
class InsertionTest {
public:
    // The sentence for trying the insertion, or one for trying how corrections are learned.
    enum class Sample { plain, learning };

    struct Environment {
        Scheduler& scheduler;
        DictationSession& session;
        TextInsertion& insertion;
        PasteLearning& learning;
        CorrectionStore& corrections;
        GlobalHotkey& hotkey;
        Permissions& permissions;
        DictationStatus& status;
    };

    explicit InsertionTest(Environment environment);

    // Starts the countdown. Does nothing during a dictation; fails visibly without the permissions.
    void arm(Sample sample);
    // The countdown is running.
    bool isArmed() const { return isArmed_; }
    // Pastes now instead of at the end of the countdown.
    void run();
    // Ends the countdown or the paste without a result.
    void cancel();

    bool isIdle() const { return tasks_.isEmpty(); }

private:
    Task<void> countDown(std::stop_token stop);
    Task<void> paste(DictationSession::Id id, std::stop_token stop);

    Environment environment_;
    bool isArmed_ = false;
    Sample sample_ = Sample::plain;
    TaskHandle countdown_;
    TaskHandle pasting_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
