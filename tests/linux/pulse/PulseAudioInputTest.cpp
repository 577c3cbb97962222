#include <gtest/gtest.h>

#include <cmath>

#include "Quorvi/dictation/MicrophoneChoice.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "tests/support/sound/DecodedSound.h"
#include "tests/support/sound/MicrophoneUser.h"
#include "tests/support/sound/SoundServer.h"
#include "tests/support/sound/Sweep.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

constexpr long long frame = 1024;  // of the encoder

// The last frame is filled up with silence, which the decoder hands out as well.
void expectHolds(const DecodedSound& sound, long long captured) {
    EXPECT_GE(static_cast<long long>(sound.samples.size()), captured);
    EXPECT_LT(static_cast<long long>(sound.samples.size()), captured + frame);
    EXPECT_EQ(std::llround(sound.declaredSeconds * Sweep::rate), captured);
}

class PulseAudioInputTest : public testing::Test {
protected:
    bool hasNoStream() {
        return eventually([&] {
            return server.pactl("list source-outputs").find("Quorvi") == std::string::npos;
        });
    }

    SoundServer server;
    TestFolder folder;
    std::filesystem::path file = folder.path() / "recording.m4a";
    MicrophoneUser user{server.address()};
};

TEST_F(PulseAudioInputTest, RecordsMonoAacInAPrivateFileWithoutAMissingOrRepeatedPiece) {
    constexpr std::size_t window = 1764;  // 40 ms
    const auto playing = server.play(Sweep::samples(6, 0.5));
    ASSERT_TRUE(user.record(file)) << user.error;
    EXPECT_EQ(std::filesystem::status(file).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    ASSERT_TRUE(user.waitForLevel(-20));
    user.scheduler.runFor(2500ms);
    ASSERT_TRUE(user.stop()) << user.error;
    EXPECT_TRUE(user.ends.empty());

    const DecodedSound sound(file);
    EXPECT_EQ(sound.codec, "aac");
    EXPECT_NE(sound.container.find("mp4"), std::string::npos);
    EXPECT_EQ(sound.sampleRate, 44'100);
    EXPECT_EQ(sound.channels, 1);
    EXPECT_NEAR(sound.bitRate, 62'000, 18'000);
    const auto captured =
        static_cast<std::size_t>(std::llround(user.capture->currentTime() * Sweep::rate));
    expectHolds(sound, static_cast<long long>(captured));

    std::optional<double> former;
    int steady = 0, jumps = 0;
    // The encoder of FFmpeg 7 distorts the last two frames before a sudden end.
    for (std::size_t at = 0; at + window + 2 * frame <= captured; at += window) {
        const auto position = Sweep::position(sound.samples.data() + at, window);
        if (position && former)
            ++(std::abs(*position - *former - window / Sweep::rate) < 0.004 ? steady : jumps);
        // The window in which the sound begins holds silence as well.
        if (position && (former || at == 0 || *position > 0.1)) former = position;
    }
    EXPECT_GT(steady, 40);
    EXPECT_EQ(jumps, 0);
}

TEST_F(PulseAudioInputTest, TellsTheLevelInDecibelsOfFullScale) {
    ASSERT_TRUE(user.record(file)) << user.error;
    user.scheduler.runFor(100ms);
    EXPECT_FLOAT_EQ(user.capture->averagePower(), -160);
    const auto playing = server.play(Sweep::samples(20, 0.25));
    ASSERT_TRUE(user.waitForLevel(-17));
    user.scheduler.runFor(50ms);
    user.capture->averagePower();
    user.scheduler.runFor(300ms);
    const double sine = 20 * std::log10(0.25 / std::numbers::sqrt2);
    EXPECT_NEAR(user.capture->averagePower(), sine, 0.3);
    ASSERT_TRUE(user.stop());
}

TEST_F(PulseAudioInputTest, RecordsTheChosenMicrophoneAndTheDefaultWhileThatIsUnplugged) {
    server.pactl("load-module module-null-sink sink_name=other_feed rate=44100 channels=1");
    const auto module = server.pactl(
        "load-module module-remap-source master=other_feed.monitor source_name=headset "
        "source_properties=device.description=Headset");
    MemoryPreferences preferences;
    Settings settings(preferences);
    MicrophoneChoice choice(settings, user.input);
    ASSERT_TRUE(until(user.scheduler, [&] { return choice.all().size() == 2; }));
    EXPECT_EQ(choice.all().front().name, "mic");
    choice.choose(choice.all().back());
    EXPECT_EQ(choice.used(), (Microphone{"headset", "Headset"}));
    {
        const auto playing = server.play(Sweep::samples(20, 0.25), "other_feed");
        const auto level = choice.makeLevel();
        EXPECT_TRUE(until(user.scheduler, [&] { return level->averagePower() > -20; }));
        ASSERT_TRUE(user.record(file)) << user.error;
        EXPECT_TRUE(user.waitForLevel(-20));
        ASSERT_TRUE(user.stop()) << user.error;
    }
    server.pactl("unload-module " + module);
    ASSERT_TRUE(until(user.scheduler, [&] { return choice.isMissing(); }));
    EXPECT_EQ(choice.takeNews(), say::microphoneMissing(choice.all().front().description));
    EXPECT_EQ(choice.takeNews(), std::nullopt);
    const auto playing = server.play(Sweep::samples(20, 0.25));
    ASSERT_TRUE(user.record(folder.path() / "second.m4a")) << user.error;
    EXPECT_TRUE(user.waitForLevel(-20));
    ASSERT_TRUE(user.stop()) << user.error;
}

TEST_F(PulseAudioInputTest, ACancelledOrDroppedStartLeavesNoFileAndNoStream) {
    for (int turns = 0; turns < 6; ++turns) {
        std::stop_source stop;
        const auto& starting = user.begin(file, stop.get_token());
        for (int i = 0; i < turns; ++i) user.scheduler.runFor(2ms);
        stop.request_stop();
        ASSERT_TRUE(await(user.scheduler, starting));
        if (starting.value()) {
            ASSERT_TRUE(user.stop());
            std::filesystem::remove(file);
        }
        EXPECT_FALSE(std::filesystem::exists(file)) << turns;
        user.capture.reset();
    }
    {
        MicrophoneUser other(server.address());
        other.begin(file);
    }
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(hasNoStream());
}

TEST_F(PulseAudioInputTest, NeverWritesThroughALinkOrOverAFile) {
    const auto precious = folder.write("precious", "kept");
    std::filesystem::create_symlink(precious, file);
    EXPECT_FALSE(user.record(file));
    EXPECT_TRUE(user.error.starts_with("The recording could not be created: ")) << user.error;
    EXPECT_FALSE(user.record(precious));
    EXPECT_EQ(contentOf(precious), "kept");
}

}  // namespace
}  // namespace quorvi::test
