#include <gtest/gtest.h>

#include <cmath>

#include "Quorvi/dictation/RecordingCue.h"
#include "Quorvi/platform/linux/PulseSoundOutput.h"
#include "tests/linux/support/DecodedSound.h"
#include "tests/linux/support/MicrophoneUser.h"
#include "tests/linux/support/PipeWireServer.h"
#include "tests/linux/support/SpeakerEar.h"
#include "tests/linux/support/Sweep.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;
using testing::DecodedSound;
using testing::MicrophoneUser;
using testing::PipeWireServer;
using testing::SpeakerEar;
using testing::Sweep;
using testing::TemporaryFolder;

TEST(PipeWireSound, RecordsAndPlaysAsPulseAudioDoes) {
    const PipeWireServer server;
    const TemporaryFolder folder;
    const auto file = folder.path() / "recording.m4a";
    MicrophoneUser user(server.address());
    ASSERT_TRUE(user.waitForMicrophone(true));
    ASSERT_TRUE(user.record(file)) << *user.error;
    const auto playing = server.play(Sweep::samples(3, 0.5));
    bool heard = false;
    for (int i = 0; i < 500 && !heard; ++i) {
        user.scheduler.runFor(20ms);
        heard = user.capture->averagePower() > -20;
    }
    EXPECT_TRUE(heard);
    user.scheduler.runFor(1s);
    ASSERT_TRUE(user.stop()) << *user.error;
    const DecodedSound sound(file);
    EXPECT_EQ(std::llround(sound.declaredSeconds * Sweep::rate),
              std::llround(user.capture->currentTime() * Sweep::rate));
    EXPECT_TRUE(user.ends.empty());

    PulseSoundOutput output(user.connection);
    const auto clip = output.load(wavData(RecordingCue::start));
    for (int round = 0; round < 2; ++round) {
        const SpeakerEar ear(server.address());
        clip->play(0.5);
        const auto peak = [&] {
            int loudest = 0;
            for (int sample : ear.sound()) loudest = std::max(loudest, std::abs(sample));
            return loudest;
        };
        EXPECT_TRUE(testing::eventually([&] { return peak() > 6800; })) << round;
        user.scheduler.runFor(1200ms);
        EXPECT_LE(peak(), 7200) << round;
    }
}

TEST(PipeWireSound, ARemovedMicrophoneEndsTheRecordingAndNoMonitorTakesItsPlace) {
    const PipeWireServer server;
    const TemporaryFolder folder;
    MicrophoneUser user(server.address());
    ASSERT_TRUE(user.waitForMicrophone(true));
    ASSERT_TRUE(user.record(folder.path() / "recording.m4a")) << *user.error;
    server.pactl("unload-module module-remap-source");
    ASSERT_TRUE(user.waitForEnd());
    EXPECT_EQ(user.ends, std::vector{CaptureEnd::deviceLost});
    ASSERT_TRUE(user.waitForMicrophone(false));
    EXPECT_FALSE(user.record(folder.path() / "other.m4a"));
}

}  // namespace
}  // namespace quorvi
