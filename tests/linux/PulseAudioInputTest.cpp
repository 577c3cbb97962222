#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>

#include "Quorvi/dictation/AudioRecorder.h"
#include "tests/linux/support/DecodedSound.h"
#include "tests/linux/support/MicrophoneUser.h"
#include "tests/linux/support/SoundServer.h"
#include "tests/linux/support/Sweep.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;
using testing::DecodedSound;
using testing::MicrophoneUser;
using testing::SoundServer;
using testing::Sweep;
using testing::TemporaryFolder;

// The last frame of the encoder is filled up with silence, which its decoder hands out as well.
void expectHolds(const DecodedSound& sound, long long captured) {
    constexpr long long frame = 1024;
    EXPECT_GE(static_cast<long long>(sound.samples.size()), captured);
    EXPECT_LT(static_cast<long long>(sound.samples.size()), captured + frame);
    EXPECT_EQ(std::llround(sound.declaredSeconds * Sweep::rate), captured);
}

class PulseAudioInputTest : public ::testing::Test {
protected:
    bool waitForLevel(float decibels) {
        for (int i = 0; i < 1000; ++i) {
            user.scheduler.runFor(20ms);
            if (user.capture->averagePower() > decibels) return true;
        }
        return false;
    }

    SoundServer server;
    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "recording.m4a";
    MicrophoneUser user{server.address()};
};

TEST_F(PulseAudioInputTest, RecordsMonoAacOf44100HzIntoAFileOfTheOwnerOnly) {
    ASSERT_TRUE(user.record(file)) << *user.error;
    struct stat info {};
    ASSERT_EQ(::stat(file.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600U);
    const auto playing = server.play(Sweep::samples(4, 0.5));
    ASSERT_TRUE(waitForLevel(-20));
    user.scheduler.runFor(2s);
    ASSERT_TRUE(user.stop()) << *user.error;

    const DecodedSound sound(file);
    EXPECT_EQ(sound.codec, "aac");
    EXPECT_NE(sound.container.find("mp4"), std::string::npos);
    EXPECT_EQ(sound.sampleRate, 44'100);
    EXPECT_EQ(sound.channels, 1);
    EXPECT_GT(sound.bitRate, 45'000);
    EXPECT_LT(sound.bitRate, 80'000);
    EXPECT_TRUE(user.ends.empty());
}

TEST_F(PulseAudioInputTest, EveryCapturedSampleIsInTheFileAndNoneIsMissingBetween) {
    const auto playing = server.play(Sweep::samples(6, 0.5));
    ASSERT_TRUE(user.record(file)) << *user.error;
    ASSERT_TRUE(waitForLevel(-20));
    user.scheduler.runFor(2500ms);
    ASSERT_TRUE(user.stop()) << *user.error;

    const DecodedSound sound(file);
    const auto captured = std::llround(user.capture->currentTime() * Sweep::rate);
    expectHolds(sound, captured);
    constexpr std::size_t window = 1764;  // 40 ms
    std::optional<double> former;
    int compared = 0;
    for (std::size_t at = 0; at + window <= sound.samples.size(); at += window) {
        const auto position = Sweep::position(sound.samples.data() + at, window);
        if (position && former) {
            EXPECT_NEAR(*position - *former, window / Sweep::rate, 0.004) << "at sample " << at;
            ++compared;
        }
        // The window in which the sound begins holds silence as well.
        if (position && (former || at == 0 || *position > 0.1)) former = position;
    }
    EXPECT_GT(compared, 40);
}

TEST_F(PulseAudioInputTest, TellsTheLevelInDecibelsOfFullScale) {
    ASSERT_TRUE(user.record(file)) << *user.error;
    user.scheduler.runFor(100ms);
    EXPECT_FLOAT_EQ(user.capture->averagePower(), -160);
    const auto playing = server.play(Sweep::samples(20, 0.25));
    ASSERT_TRUE(waitForLevel(-17));
    user.scheduler.runFor(50ms);
    user.capture->averagePower();
    user.scheduler.runFor(300ms);
    const double sine = 20 * std::log10(0.25 / std::numbers::sqrt2);
    EXPECT_NEAR(user.capture->averagePower(), sine, 0.3);
    ASSERT_TRUE(user.stop());
}

TEST_F(PulseAudioInputTest, RecordsOneAfterTheOther) {
    for (int i = 0; i < 5; ++i) {
        const auto name = folder.path() / (std::to_string(i) + ".m4a");
        ASSERT_TRUE(user.record(name)) << *user.error;
        user.scheduler.runFor(50ms);
        ASSERT_TRUE(user.stop()) << *user.error;
        expectHolds(DecodedSound(name), std::llround(user.capture->currentTime() * Sweep::rate));
    }
}

TEST_F(PulseAudioInputTest, ACancelledStartLeavesNoFileAndNoStream) {
    for (int turns = 0; turns < 6; ++turns) {
        auto handle = user.begin(file);
        for (int i = 0; i < turns; ++i) user.scheduler.runFor(2ms);
        handle.cancel();
        user.scheduler.runUntil([&] { return user.cancelled || user.running; }, 30s);
        if (user.running) {
            ASSERT_TRUE(user.stop());
            std::filesystem::remove(file);
        }
        EXPECT_FALSE(std::filesystem::exists(file)) << turns;
        user.capture.reset();
    }
    EXPECT_TRUE(testing::eventually(
        [&] { return server.pactl("list source-outputs").find("Quorvi") == std::string::npos; }));
}

TEST_F(PulseAudioInputTest, ATaskDroppedWhileItStartsLeavesNoFileAndNoStream) {
    {
        MicrophoneUser other(server.address());
        other.begin(file);
    }
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(testing::eventually(
        [&] { return server.pactl("list source-outputs").find("Quorvi") == std::string::npos; }));
}

TEST_F(PulseAudioInputTest, NeverWritesThroughALinkOrOverAFile) {
    const auto precious = folder.path() / "precious";
    std::ofstream(precious) << "kept";
    std::filesystem::create_symlink(precious, file);
    EXPECT_FALSE(user.record(file));
    EXPECT_TRUE(user.error.value().starts_with("The recording could not be created: "));
    EXPECT_FALSE(user.record(precious));
    EXPECT_EQ(std::filesystem::file_size(precious), 4U);
}

Task<void> dictate(AudioRecorder& recorder, Scheduler& scheduler, std::optional<Bytes>& result,
                   std::stop_token stop) {
    auto starting = recorder.start(stop);
    co_await starting;
    auto speaking = sleepFor(scheduler, 300ms, stop);
    co_await speaking;
    auto finishing = recorder.finish(stop);
    result = co_await finishing;
}

TEST_F(PulseAudioInputTest, ARecorderHandsOverAWholeFileAndLeavesNone) {
    const auto recordings = folder.path() / "VeskRecordings";
    std::optional<Bytes> bytes;
    {
        SerialExecutor disk("disk");
        AudioRecorder recorder(user.input, disk, user.scheduler, recordings);
        TaskScope tasks(user.scheduler);
        tasks.start(
            [&](std::stop_token stop) { return dictate(recorder, user.scheduler, bytes, stop); });
        ASSERT_TRUE(user.scheduler.runUntil([&] { return bytes.has_value(); }, 30s));
        // Another one is under way when the program ends.
        std::optional<Bytes> never;
        tasks.start(
            [&](std::stop_token stop) { return dictate(recorder, user.scheduler, never, stop); });
        user.scheduler.runFor(150ms);
    }
    EXPECT_TRUE(std::filesystem::is_empty(recordings));
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes->data()),
               static_cast<std::streamsize>(bytes->size()));
    EXPECT_GT(DecodedSound(file).declaredSeconds, 0.25);
}

}  // namespace
}  // namespace quorvi
