#include "Quorvi/dictation/AudioRecorder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <deque>

#include "tests/fakes/FakeAudioInput.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/TestFolder.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

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
        recorder = std::make_unique<AudioRecorder>(input, disk, scheduler, folder);
        recorder->onRecordingChanged = [this](bool on) { changes.push_back(on); };
        recorder->onFailure = [this](const std::string& text) { failures.push_back(text); };
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
    std::vector<std::string> files() const {
        std::vector<std::string> names;
        if (fs::exists(folder))
            for (const auto& entry : fs::directory_iterator(folder))
                names.push_back(entry.path().filename());
        return names;
    }

    const TestFolder root;
    const fs::path folder = root.path() / "VeskRecordings";
    SteppingScheduler scheduler;
    TurnExecutor disk{scheduler};
    FakeAudioInput input{scheduler};
    std::unique_ptr<AudioRecorder> recorder;
    std::vector<bool> changes;
    std::vector<std::string> failures;
};

TEST_F(AudioRecorderTest, RecordsIntoAPrivateFileAndHandsOverItsBytes) {
    EXPECT_EQ(recorder->meter(), -160);
    ASSERT_EQ(started(), "started");
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    EXPECT_TRUE(files().empty()) << "a recording that runs has no name";
    scheduler.advance(std::chrono::milliseconds(1500));
    EXPECT_EQ(recorder->duration(), 1.5);
    EXPECT_EQ(recorder->meter(), -20);

    EXPECT_EQ(finished(), "bytes sound");
    EXPECT_TRUE(files().empty());
    EXPECT_EQ(recorder->duration(), 0);
    EXPECT_EQ(finished(), "No recording is available.");
    EXPECT_EQ(changes, (std::vector{true, false}));
}

TEST_F(AudioRecorderTest, ANewStartReplacesARecording) {
    ASSERT_EQ(started(), "started");
    ASSERT_EQ(started(), "started");
    EXPECT_EQ(changes, (std::vector{true, false, true}));
    EXPECT_EQ(finished(), "bytes sound");
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
    input.recordFailure = "The microphone could not start. Check your macOS sound input.";
    EXPECT_EQ(started(), *input.recordFailure);
    EXPECT_TRUE(changes.empty());
    EXPECT_TRUE(files().empty());
    input.recordFailure.reset();
    ASSERT_EQ(started(), "started");
    input.finishFailure = "The recording could not be written: No space left on device.";
    EXPECT_EQ(finished(), *input.finishFailure);
    EXPECT_TRUE(files().empty());
    EXPECT_EQ(finished(), "No recording is available.");
}

TEST_F(AudioRecorderTest, AFolderThatIsNotSafelyTheUsersOwnIsRefused) {
    const auto elsewhere = root.path() / "elsewhere";
    fs::create_directory(elsewhere);
    fs::create_directory_symlink(elsewhere, folder);
    const auto refusal = "The folder for recordings, " + folder.string() +
                         ", is not a folder of your own. Remove it and try again.";
    std::ofstream(elsewhere / "kept.m4a") << "kept";
    EXPECT_EQ(started(), refusal);
    recorder->removeStaleRecordings();
    scheduler.settle();
    EXPECT_TRUE(fs::exists(elsewhere / "kept.m4a"));
    fs::remove(folder);
    std::ofstream(folder) << "a file";
    EXPECT_EQ(started(), refusal);
    fs::remove(folder);
    fs::create_directory(folder);
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(folder.c_str(), 12345, 12345), 0);
        EXPECT_EQ(started(), refusal);
        ASSERT_EQ(::chown(folder.c_str(), 0, 0), 0);
    }
    fs::permissions(folder, fs::perms::all);
    EXPECT_EQ(started(), "started");
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
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
                EXPECT_TRUE(files().empty());
                EXPECT_EQ(std::ranges::count(changes, true), std::ranges::count(changes, false));
            }
}

TEST_F(AudioRecorderTest, ARecordingThatEndsOnItsOwnIsReportedWithItsReason) {
    ASSERT_EQ(started(), "started");
    input.end(CaptureEnd::encodingError);
    EXPECT_EQ(failures.back(),
              "Recording stopped unexpectedly. Check your microphone and try again.");
    ASSERT_EQ(started(), "started");
    // Whoever hears of it may discard the recording then and there.
    recorder->onFailure = [this](const std::string& text) {
        failures.push_back(text);
        recorder->discard();
    };
    input.end(CaptureEnd::deviceLost);
    scheduler.settle();
    EXPECT_EQ(failures.back(), "Recording stopped unexpectedly. Please try again.");
    EXPECT_EQ(changes, (std::vector{true, false, true, false}));
    EXPECT_TRUE(files().empty());
}

TEST_F(AudioRecorderTest, OnlyLeftOverRecordingsAreRemoved) {
    recorder->removeStaleRecordings();
    scheduler.settle();
    fs::create_directory(folder);
    for (const char* name : {"old.m4a", "notes.txt", "m4a"}) std::ofstream(folder / name) << "x";
    recorder->removeStaleRecordings();
    ASSERT_EQ(started(), "started");
    const auto left = files();
    EXPECT_EQ(left.size(), 2U);
    EXPECT_EQ(std::ranges::count(left, "old.m4a"), 0);
}

}  // namespace
}  // namespace quorvi::test
