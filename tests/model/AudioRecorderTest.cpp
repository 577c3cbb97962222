#include "Quorvi/dictation/AudioRecorder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <deque>
#include <fstream>

#include "QuorviCore/async/TaskScope.h"
#include "QuorviCore/identity/Uuid.h"
#include "tests/fakes/FakeSound.h"
#include "tests/fakes/VirtualScheduler.h"

namespace quorvi {
namespace {

namespace fs = std::filesystem;
using audiofakes::FakeAudioInput;

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

class AudioRecorderTest : public ::testing::Test {
protected:
    AudioRecorderTest() {
        auto name = (fs::temp_directory_path() / "quorvi-recorder-XXXXXX").string();
        root = ::mkdtemp(name.data());
        folder = root / "VeskRecordings";
        makeRecorder();
    }
    ~AudioRecorderTest() override {
        recorder.reset();
        scheduler.settle();
        fs::remove_all(root);
    }

    void makeRecorder() {
        recorder = std::make_unique<AudioRecorder>(input, disk, scheduler, folder);
        recorder->onRecordingChanged = [this](bool on) { changes.push_back(on); };
        recorder->onFailure = [this](const std::string& text) { failures.push_back(text); };
    }

    Task<void> start(std::stop_token stop) {
        auto starting = recorder->start(stop);
        try {
            co_await starting;
            outcome = "started";
        } catch (const Cancelled&) {
            outcome = "cancelled";
        } catch (const std::exception& failure) {
            outcome = failure.what();
        }
    }
    Task<void> finish(std::stop_token stop) {
        auto finishing = recorder->finish(stop);
        try {
            const Bytes bytes = co_await finishing;
            outcome = "bytes " + std::string(bytes.begin(), bytes.end());
        } catch (const Cancelled&) {
            outcome = "cancelled";
        } catch (const std::exception& failure) {
            outcome = failure.what();
        }
    }
    std::string started() {
        scope.start([this](std::stop_token stop) { return start(stop); });
        scheduler.settle();
        return outcome;
    }
    std::string finished() {
        scope.start([this](std::stop_token stop) { return finish(stop); });
        scheduler.settle();
        return outcome;
    }
    std::vector<std::string> files() const {
        std::vector<std::string> names;
        if (fs::exists(folder))
            for (const auto& entry : fs::directory_iterator(folder))
                names.push_back(entry.path().filename());
        return names;
    }

    fs::path root, folder;
    SteppingScheduler scheduler;
    TurnExecutor disk{scheduler};
    FakeAudioInput input{scheduler};
    std::unique_ptr<AudioRecorder> recorder;
    std::vector<bool> changes;
    std::vector<std::string> failures;
    std::string outcome;
    TaskScope scope{scheduler};
};

TEST_F(AudioRecorderTest, RecordsIntoAPrivateFileAndHandsOverItsBytes) {
    EXPECT_EQ(recorder->duration(), 0);
    EXPECT_EQ(recorder->meter(), -160);
    ASSERT_EQ(started(), "started");
    struct stat info {};
    ASSERT_EQ(::stat(folder.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0700U);
    ASSERT_EQ(files().size(), 1U);
    const fs::path name = files()[0];
    EXPECT_EQ(name.extension(), ".m4a");
    EXPECT_TRUE(isUuid(name.stem()));
    EXPECT_EQ(recorder->duration(), 1.5);
    EXPECT_EQ(recorder->meter(), -20);

    EXPECT_EQ(finished(), "bytes sound");
    EXPECT_EQ(changes, (std::vector{true, false}));
    EXPECT_TRUE(files().empty());
    EXPECT_EQ(recorder->duration(), 0);
    EXPECT_EQ(finished(), "No recording is available.");
    EXPECT_EQ(changes.size(), 2U);
}

TEST_F(AudioRecorderTest, DiscardingReportsTheEndOnceAndLeavesNoFile) {
    ASSERT_EQ(started(), "started");
    recorder->discard();
    EXPECT_EQ(input.capturing, 0);
    recorder->discard();
    recorder->stopCapture();
    scheduler.settle();
    EXPECT_EQ(changes, (std::vector{true, false}));
    EXPECT_TRUE(files().empty());
    EXPECT_EQ(recorder->meter(), -160);
}

TEST_F(AudioRecorderTest, ANewStartReplacesARecording) {
    ASSERT_EQ(started(), "started");
    const auto former = files();
    ASSERT_EQ(started(), "started");
    EXPECT_EQ(changes, (std::vector{true, false, true}));
    EXPECT_EQ(files().size(), 1U);
    EXPECT_NE(files(), former);
    EXPECT_EQ(input.capturing, 1);
}

TEST_F(AudioRecorderTest, AStartFromWithinTheReportOfAnEndSurvivesTheDiscardThatReportedIt) {
    ASSERT_EQ(started(), "started");
    recorder->onRecordingChanged = [this](bool on) {
        if (!on) scope.start([this](std::stop_token stop) { return start(stop); });
    };
    recorder->discard();
    scheduler.settle();
    EXPECT_EQ(input.capturing, 1);
    EXPECT_EQ(files().size(), 1U);
}

TEST_F(AudioRecorderTest, FailuresOfAStartLeaveNothingBehind) {
    input.refusal = "The microphone could not start. Check your macOS sound input.";
    EXPECT_EQ(started(), *input.refusal);
    EXPECT_TRUE(changes.empty());
    EXPECT_TRUE(files().empty());
    EXPECT_EQ(finished(), "No recording is available.");
}

TEST_F(AudioRecorderTest, AFolderThatIsNotSafelyTheUsersOwnIsRefused) {
    const auto elsewhere = root / "elsewhere";
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
            for (int turns = 0; turns < 8; ++turns) {
                SCOPED_TRACE("way " + std::to_string(static_cast<int>(way)) + " finishing " +
                             std::to_string(finishing) + " turn " + std::to_string(turns));
                // The gate keeps a start waiting within the capture.
                input.startsAtOnce = finishing;
                changes.clear();
                outcome.clear();
                if (finishing) {
                    ASSERT_EQ(started(), "started");
                }
                auto tasks = std::make_unique<TaskScope>(scheduler);
                auto handle = tasks->start(
                    [&](std::stop_token stop) { return finishing ? finish(stop) : start(stop); });
                for (int i = 0; i < turns; ++i) scheduler.runOne();
                if (way == Way::cancel) handle.cancel();
                if (way == Way::discard) recorder->discard();
                if (way == Way::stopCapture) recorder->stopCapture();
                if (way == Way::dropTask) tasks.reset();
                if (way == Way::dropRecorder) makeRecorder();
                scheduler.settle();
                if (tasks && (way != Way::stopCapture || !finishing)) {
                    EXPECT_NE(outcome, "");
                }
                recorder->discard();
                scheduler.settle();
                EXPECT_EQ(input.capturing, 0);
                EXPECT_TRUE(files().empty());
                EXPECT_EQ(std::ranges::count(changes, true), std::ranges::count(changes, false));
            }
}

TEST_F(AudioRecorderTest, ARecordingThatEndsOnItsOwnIsReportedWithItsReason) {
    ASSERT_EQ(started(), "started");
    input.current->end(CaptureEnd::encodingError);
    EXPECT_EQ(failures.back(),
              "Recording stopped unexpectedly. Check your microphone and try again.");
    // Whoever hears of it may discard the recording then and there.
    recorder->onFailure = [this](const std::string& text) {
        failures.push_back(text);
        recorder->discard();
    };
    input.current->end(CaptureEnd::deviceLost);
    scheduler.settle();
    EXPECT_EQ(failures.back(), "Recording stopped unexpectedly. Please try again.");
    EXPECT_EQ(changes, (std::vector{true, false}));
    EXPECT_TRUE(files().empty());
}

TEST_F(AudioRecorderTest, AFileThatCannotBeCompletedOrReadIsAFailureWithoutLeftovers) {
    ASSERT_EQ(started(), "started");
    input.finishingFailure = "The recording could not be written: No space left on device.";
    EXPECT_EQ(finished(), *input.finishingFailure);
    EXPECT_TRUE(files().empty());
    EXPECT_EQ(finished(), "No recording is available.");
}

TEST_F(AudioRecorderTest, OnlyLeftOverRecordingsAreRemoved) {
    recorder->removeStaleRecordings();
    scheduler.settle();
    fs::create_directory(folder);
    for (const char* name : {"old.m4a", "notes.txt", "m4a"}) std::ofstream(folder / name) << "x";
    recorder->removeStaleRecordings();
    ASSERT_EQ(started(), "started");
    auto left = files();
    EXPECT_EQ(left.size(), 3U);
    EXPECT_EQ(std::ranges::count(left, "old.m4a"), 0);
    recorder->prepare();
    EXPECT_EQ(input.prepared, 1);
}

}  // namespace
}  // namespace quorvi
