#include "Quorvi/dictation/AudioRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>

#include "tests/fakes/FakeAudioInput.h"
#include "tests/fakes/PrintedMessage.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

// Takes single turns, so that a test can step in between any two.
class SteppingScheduler : public VirtualScheduler {
public:
    void post(std::function<void()> work) override { turns_.push_back(std::move(work)); }
    bool runOne() {
        VirtualScheduler::settle();
        if (turns_.empty()) return false;
        const auto work = std::move(turns_.front());
        turns_.pop_front();
        work();
        return true;
    }
    void settle() {
        while (runOne()) continue;
    }

private:
    std::deque<std::function<void()>> turns_;
};

class AudioRecorderTest : public testing::Test {
protected:
    AudioRecorderTest() { makeRecorder(); }
    ~AudioRecorderTest() override {
        recorder.reset();
        scheduler.settle();
    }

    void makeRecorder() {
        recorder = std::make_unique<AudioRecorder>(input, files, disk, scheduler);
        recorder->onRecordingChanged = [this](bool on) { changes.push_back(on); };
    }
    std::string started() {
        const Running<void> starting(recorder->start({}));
        scheduler.settle();
        return starting.value() ? "started" : starting.failure();
    }
    std::string finished() {
        const Running<Bytes> finishing(recorder->finish({}));
        scheduler.settle();
        const auto& bytes = finishing.value();
        return bytes ? "bytes " + std::string(bytes->begin(), bytes->end()) : finishing.failure();
    }

    SteppingScheduler scheduler;
    TurnExecutor disk{scheduler};
    FakeRecordingFiles files;
    FakeAudioInput input{scheduler, files};
    std::unique_ptr<AudioRecorder> recorder;
    std::vector<bool> changes;
};

TEST_F(AudioRecorderTest, RecordsIntoAFileWithoutANameAndHandsOverItsBytes) {
    EXPECT_EQ(recorder->meter(), -160);
    ASSERT_EQ(started(), "started");
    ASSERT_EQ(started(), "started") << "replaces the first";
    EXPECT_TRUE(files.named.empty()) << "it has no name while it runs";
    scheduler.advance(std::chrono::milliseconds(1500));
    EXPECT_EQ(recorder->duration(), 1.5);
    EXPECT_EQ(recorder->meter(), -20);
    EXPECT_EQ(finished(), "bytes sound");
    EXPECT_EQ(recorder->duration(), 0);
    EXPECT_EQ(finished(), say::noRecording().english());
    EXPECT_EQ(changes, (std::vector{true, false, true, false}));
}

TEST_F(AudioRecorderTest, AStartFromWithinTheReportOfAnEndSurvivesTheDiscardThatReportedIt) {
    ASSERT_EQ(started(), "started");
    std::optional<Running<void>> next;
    recorder->onRecordingChanged = [&](bool on) {
        if (!on) next.emplace(recorder->start({}));
    };
    recorder->discard();
    scheduler.settle();
    EXPECT_TRUE(input.isCapturing());
    recorder->onRecordingChanged = nullptr;
}

TEST_F(AudioRecorderTest, AFailureIsPassedOnAndLeavesNothingBehind) {
    files.refuses = true;
    EXPECT_EQ(started(), say::recordingFolderNotOwn("/tmp/recordings").english());
    files.refuses = false;
    input.recordFailure = say::microphoneCouldNotStart();
    EXPECT_EQ(started(), input.recordFailure->english());
    EXPECT_TRUE(changes.empty() && files.named.empty());
    input.recordFailure.reset();
    ASSERT_EQ(started(), "started");
    input.finishFailure = say::recordingNotWritten("No space left on device");
    EXPECT_EQ(finished(), input.finishFailure->english());
    EXPECT_EQ(finished(), say::noRecording().english());
}

TEST_F(AudioRecorderTest, CancellingOrDiscardingAtAnyTurnLeavesNoFileAndNoCapture) {
    enum class Way { cancel, discard, stopCapture, dropTask, dropRecorder };
    for (const auto way :
         {Way::cancel, Way::discard, Way::stopCapture, Way::dropTask, Way::dropRecorder})
        for (const bool finishing : {false, true})
            for (int turns = 0; turns < 9; ++turns) {
                SCOPED_TRACE("way " + std::to_string(static_cast<int>(way)) + " finishing " +
                             std::to_string(finishing) + " turn " + std::to_string(turns));
                // Otherwise a start is kept waiting within the capture.
                input.startsAtOnce = finishing;
                changes.clear();
                if (finishing) {
                    ASSERT_EQ(started(), "started");
                }
                std::stop_source stop;
                std::optional<Running<void>> starting;
                std::optional<Running<Bytes>> completing;
                if (finishing)
                    completing.emplace(recorder->finish(stop.get_token()));
                else
                    starting.emplace(recorder->start(stop.get_token()));
                for (int i = 0; i < turns; ++i) scheduler.runOne();
                if (way == Way::cancel) stop.request_stop();
                if (way == Way::discard) recorder->discard();
                if (way == Way::stopCapture) recorder->stopCapture();
                if (way == Way::dropTask) starting.reset(), completing.reset();
                if (way == Way::dropRecorder) makeRecorder();
                scheduler.settle();
                EXPECT_TRUE(!starting || starting->ended());
                EXPECT_TRUE(!completing || completing->ended());
                recorder->discard();
                scheduler.settle();
                EXPECT_FALSE(input.isCapturing());
                EXPECT_TRUE(files.named.empty());
                EXPECT_EQ(std::ranges::count(changes, true), std::ranges::count(changes, false));
            }
}

}  // namespace
}  // namespace quorvi::test
