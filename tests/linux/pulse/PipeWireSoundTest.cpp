#include <gtest/gtest.h>

#include <cmath>

#include "Quorvi/dictation/RecordingCue.h"
#include "Quorvi/platform/linux/pulse/PulseSoundOutput.h"
#include "tests/support/sound/DecodedSound.h"
#include "tests/support/sound/MicrophoneUser.h"
#include "tests/support/sound/SoundServer.h"
#include "tests/support/sound/SpeakerEar.h"
#include "tests/support/sound/Sweep.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

TEST(PipeWireSound, RecordsPlaysAndLosesAMicrophoneAsPulseAudioDoes) {
    const PipeWireServer server;
    const TestFolder folder;
    const auto file = folder.path() / "recording.m4a";
    MicrophoneUser user(server.address());
    ASSERT_TRUE(user.waitForMicrophone(true));
    ASSERT_TRUE(user.record(file)) << user.error;
    const auto playing = server.play(Sweep::samples(3, 0.5));
    EXPECT_TRUE(user.waitForLevel(-20));
    user.scheduler.runFor(1s);
    ASSERT_TRUE(user.stop()) << user.error;
    const DecodedSound sound(file);
    EXPECT_EQ(std::llround(sound.declaredSeconds * Sweep::rate),
              std::llround(user.capture->currentTime() * Sweep::rate));
    EXPECT_TRUE(user.ends.empty());

    PulseSoundOutput output(user.connection);
    const auto clip = output.load(wavData(RecordingCue::start));
    for (int round = 0; round < 2; ++round) {
        const SpeakerEar ear(server.address());
        clip->play(0.5);
        EXPECT_TRUE(eventually([&] { return loudest(ear.heard()) > 6800; })) << round;
        user.scheduler.runFor(1200ms);
        EXPECT_LE(loudest(ear.heard()), 7200) << round;
    }

    ASSERT_TRUE(user.record(folder.path() / "lost.m4a")) << user.error;
    server.pactl("unload-module module-remap-source");
    ASSERT_TRUE(user.waitForEnd());
    EXPECT_EQ(user.ends, std::vector{CaptureEnd::deviceLost});
    ASSERT_TRUE(user.waitForMicrophone(false));
    EXPECT_FALSE(user.record(folder.path() / "other.m4a")) << "a monitor took its place";
}

}  // namespace
}  // namespace quorvi::test
